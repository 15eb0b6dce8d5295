// IPTC-IIM datasets (IIM 4.2, section 1.5): a mark with the record, a number, a length, data.

#include <algorithm>
#include <array>
#include <bit>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/ByteCursor.h"
#include "base/TypeSizes.h"
#include "base/WideText.h"
#include "core/DebugLog.h"
#include "exif/IptcDatasets.h"
#include "exif/StoredText.h"
#include "exif/VxMetadata.h"
#include "xmp/TextConversion.h"

namespace {

constexpr std::uint16_t kEnvelopeMark = 0x1C01;
constexpr std::uint16_t kApplicationMark = 0x1C02;

// By design: fewer bytes end the block, so that a dataset without data at its very end is not seen.
constexpr std::size_t kShortestRest = 6;

// A length with its high bit set announces an extended dataset, which is not supported.
constexpr std::uint16_t kMaxLength = 0x7FFF;

constexpr std::uint32_t kAnsiCodePage = 0;
constexpr std::uint32_t kUtf8CodePage = 65001;

// How a block announces UTF-8 (IIM 4.2, dataset 1:90).
constexpr std::array<std::uint8_t, 3> kUtf8Escape = {0x1B, 0x25, 0x47};

constexpr WCHAR kLineFeed = 0x000A;

using Data = std::span<const std::uint8_t>;

// The first bytes of a dataset, each as a 32-bit number.
template <std::size_t kCount>
using Numbers = std::optional<std::array<std::uint32_t, kCount>>;

// Data that is shorter is skipped.
template <std::size_t kCount>
void TakeNumbers(Data data, Numbers<kCount>& numbers) {
  if (data.size() >= kCount) std::copy_n(data.begin(), kCount, numbers.emplace().begin());
}

// The data up to its first zero.
std::string_view TextOf(Data data) {
  const std::string_view text(reinterpret_cast<const char*>(data.data()), data.size());
  return text.substr(0, text.find('\0'));
}

void AppendLine(WideString& text, std::string_view line) {
  if (!text.ends_with(kLineFeed)) text.push_back(kLineFeed);
  if (IsPlainText(line, kUtf8CodePage)) {
    const std::size_t start = text.size();
    text.resize(start + line.size() + 1);
    const std::span units = std::span(text).subspan(start);
    WidenPlainText(line, {reinterpret_cast<std::uint8_t*>(units.data()), units.size_bytes()});
    text.back() = kLineFeed;
  } else {
    text.append(ToWideString(line, kUtf8CodePage));
    text.push_back(kLineFeed);
  }
}

// The datasets of one block. They reach the store when all are read, so that joining repeated ones
// is linear and only what they become counts against the budget. Until then a dataset that is not
// repeated, as most are, stays as it is.
class IptcBlock {
 public:
  explicit IptcBlock(VxMetadata& store)
      : m_store(store), m_table(*store.m_fnGetBlock(BLOCK_IPTC)) {}

  // E_FAIL when a dataset runs past the end; those before it count.
  HRESULT Read(Data bytes);

  void Store();

 private:
  void Take(std::uint16_t mark, std::uint8_t number, Data data);
  void TakeCharacterSet(Data data);
  void TakeText(std::uint32_t key, Data data);

  template <std::size_t kCount>
  void StoreNumbers(std::uint32_t key, const Numbers<kCount>& numbers);
  void StoreValue(std::uint32_t key, std::uint32_t type, Data bytes);

  // The first dataset of a key.
  struct First {
    Data data;
    std::uint32_t codePage;
  };

  // Several datasets of a key, as the lines of one text.
  struct Lines {
    std::uint32_t key;
    WideString text;
  };

  static_assert(kIptcKeyEnd <= 64);
  static constexpr std::uint64_t KeyBit(std::uint32_t key) { return std::uint64_t{1} << key; }

  WideString& LinesOf(std::uint32_t key);
  WideString TextBefore(std::uint32_t key) const;

  VxMetadata& m_store;
  TagMap& m_table;
  std::uint32_t m_codePage = kAnsiCodePage;
  Numbers<kUtf8Escape.size()> m_characterSet;
  Numbers<2> m_recordVersion;
  std::uint64_t m_keys = 0;                // a bit for each key that has a text
  std::uint64_t m_keysOfLines = 0;         // of them those with several
  std::array<First, kIptcKeyEnd> m_first;  // of the keys in this block; never cleared
  std::vector<Lines> m_lines;
};

HRESULT IptcBlock::Read(Data bytes) {
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  while (cursor.Remaining() >= kShortestRest) {
    const std::uint16_t mark = cursor.ReadU16();
    if (mark != kEnvelopeMark && mark != kApplicationMark) return S_OK;
    const std::uint8_t number = cursor.ReadU8();
    const std::uint16_t length = cursor.ReadU16();
    if (length > kMaxLength || length > cursor.Remaining()) return E_FAIL;
    Take(mark, number, cursor.ReadBytes(length));
  }
  return S_OK;
}

void IptcBlock::Take(std::uint16_t mark, std::uint8_t number, Data data) {
  const IptcDataset* row = FindIptcDataset(mark & 0xFF, number);
  if (row == nullptr && mark == kApplicationMark) {
    DebugLog("!IPTC! Not Support (%x):%x\n", unsigned{mark}, unsigned{number});
    return;
  }
  // By design: all other datasets of the envelope share one key.
  const std::uint32_t key = row == nullptr ? IPTC_OTHER_ENVELOPE : row->key;
  if (key == IPTC_CODED_CHARACTER_SET) return TakeCharacterSet(data);
  if (key == IPTC_RECORD_VERSION) return TakeNumbers(data, m_recordVersion);
  TakeText(key, data);
}

// Any other character set leaves the code page as it was.
void IptcBlock::TakeCharacterSet(Data data) {
  if (data.size() < kUtf8Escape.size()) return;
  if (std::ranges::equal(data.first(kUtf8Escape.size()), kUtf8Escape)) m_codePage = kUtf8CodePage;
  TakeNumbers(data, m_characterSet);
}

// Repeated datasets become the lines of one text. By design the first is in the block's code page
// and every later one in UTF-8, whatever the block says.
void IptcBlock::TakeText(std::uint32_t key, Data data) {
  if ((m_keys & KeyBit(key)) == 0 && !m_table.Contains(key)) {
    m_keys |= KeyBit(key);
    m_first[key] = {data, m_codePage};
    return;
  }
  AppendLine(LinesOf(key), TextOf(data));
}

WideString& IptcBlock::LinesOf(std::uint32_t key) {
  if ((m_keysOfLines & KeyBit(key)) == 0) {
    m_lines.push_back({key, TextBefore(key)});
    m_keysOfLines |= KeyBit(key);
    m_keys |= KeyBit(key);
  }
  return std::ranges::find(m_lines, key, &Lines::key)->text;
}

// Of the block before or of the first dataset.
WideString IptcBlock::TextBefore(std::uint32_t key) const {
  if (const TagEntry* stored = m_table.Find(key); stored != nullptr) {
    return LoadWideText(TagBytes(*stored));
  }
  return ToWideString(TextOf(m_first[key].data), m_first[key].codePage);
}

void IptcBlock::Store() {
  StoreNumbers(IPTC_CODED_CHARACTER_SET, m_characterSet);
  StoreNumbers(IPTC_RECORD_VERSION, m_recordVersion);
  for (std::uint64_t keys = m_keys; keys != 0; keys &= keys - 1) {
    const auto key = static_cast<std::uint32_t>(std::countr_zero(keys));
    if ((m_keysOfLines & KeyBit(key)) != 0) {
      StoreValue(key, TYPE_WIDE_TEXT, WideTextBytes(LinesOf(key)));
    } else {
      SetTagText(m_store.m_fnFindOrInsert(m_table, key), key, TextOf(m_first[key].data),
                 m_first[key].codePage, m_store.Memory());
    }
  }
}

template <std::size_t kCount>
void IptcBlock::StoreNumbers(std::uint32_t key, const Numbers<kCount>& numbers) {
  if (!numbers) return;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(numbers->data());
  StoreValue(key, TYPE_LONG, {bytes, sizeof(*numbers)});
}

void IptcBlock::StoreValue(std::uint32_t key, std::uint32_t type, Data bytes) {
  SetTagValue(m_store.m_fnFindOrInsert(m_table, key), key, type, bytes, m_store.Memory());
}

}  // namespace

HRESULT VxMetadata::m_fnParseIPTC(std::span<const std::uint8_t> bytes) {
  if ((m_nParseFlags & PARSE_IPTC) == 0) return S_OK;
  DebugLog("m_fnParseIPTC in \n");
  IptcBlock block(*this);
  const HRESULT result = block.Read(bytes);
  block.Store();
  if (result == S_OK) DebugLog("m_fnParseIPTC out\n");
  return result;
}
