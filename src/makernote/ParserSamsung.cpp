#include "makernote/ParserSamsung.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <string_view>

namespace {

constexpr std::uint32_t kVendorCode = 10;

constexpr std::uint32_t kPictureStyleTag = 0x0021;
constexpr std::uint32_t kLensIdTag = 0xA003;

struct NameRow {
  std::uint32_t code;
  std::string_view name;
};

// clang-format off
constexpr std::array kLensNames = {
    NameRow{1, "Samsung NX 30mm F2 Pancake"},
    NameRow{2, "Samsung NX 18-55mm F3.5-5.6 OIS"},
    NameRow{3, "Samsung NX 50-200mm F4-5.6 ED OIS"},
    NameRow{4, "Samsung NX 20-50mm F3.5-5.6 ED"},
    NameRow{5, "Samsung NX 20mm F2.8 Pancake"},
    NameRow{6, "Samsung NX 18-200mm F3.5-6.3 ED OIS"},
    NameRow{7, "Samsung NX 60mm F2.8 Macro ED OIS SSA"},
    NameRow{8, "Samsung NX 16mm F2.4 Pancake"},
    NameRow{9, "Samsung NX 85mm F1.4 ED SSA"},
};

constexpr std::array kPictureStyles = {
    NameRow{0,   "Standard"},
    NameRow{1,   "Vivid"},
    NameRow{2,   "Portrait"},
    NameRow{3,   "Landscape"},
    NameRow{4,   "Forest"},
    NameRow{5,   "Retro"},
    NameRow{6,   "Cool"},
    NameRow{7,   "Calm"},
    NameRow{8,   "Classic"},
    NameRow{9,   "Custom1"},
    NameRow{10,  "Custom2"},
    NameRow{11,  "Custom3"},
    NameRow{255, "n/a"},  // by design out of reach, see FillInfo
};
// clang-format on

// A copy of the first row's name with that code, or null.
std::unique_ptr<char[]> CopyName(std::span<const NameRow> table, std::uint32_t code) {
  const auto row = std::ranges::find(table, code, &NameRow::code);
  if (row == table.end()) return nullptr;
  auto text = std::make_unique<char[]>(row->name.size() + 1);
  std::ranges::copy(row->name, text.get());
  return text;
}

}  // namespace

bool CParserSamsung::ParseIFD(FileStream& stream, std::uint32_t lower, std::uint32_t upper) {
  return ReadDirectory(stream, lower, lower, upper);
}

// By design: big-endian in a little-endian file as well.
bool CParserSamsung::ReadHeader(FileStream&) {
  m_byteOrder = ByteOrder::BigEndian;
  m_nVendorCode = kVendorCode;
  return true;
}

bool CParserSamsung::FillInfo(MakerNoteInfo& info) {
  EntryCopy entry;
  if (GetEntry(kLensIdTag, entry)) {
    info.nLensId = HostValue<std::uint16_t>(entry.bytes);
    info.pszLensName = CopyName(kLensNames, info.nLensId);
  }
  if (GetEntry(kPictureStyleTag, entry)) {
    // By design: the byte is widened with its sign, so 0xFF is not the table's 255 and names
    // nothing.
    const std::int32_t style = HostValue<std::int8_t>(entry.bytes);
    info.pszPictureStyle = CopyName(kPictureStyles, static_cast<std::uint32_t>(style));
  }
  return true;
}
