// The "PKTS" records of Leaf camera backs: lists of records whose data may be a list again.

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/Numbers.h"
#include "base/TypeSizes.h"
#include "exif/VxMetadata.h"

namespace {

constexpr std::uint32_t kRecordMagic = 0x504B5453;  // "PKTS"
constexpr std::size_t kNameSize = 40;
constexpr std::string_view kBackTypeName = "ShootObj_back_type";
constexpr std::uint32_t kModelTag = 272;

// More characters than a back's number ever has.
constexpr std::size_t kNumberSize = 32;

// Camera backs by number.
// clang-format off
constexpr std::array<std::string_view, 39> kBackNames = {
    "",         "DCB2",      "Volare",    "Cantare",   "CMost",     "Valeo 6",
    "Valeo 11", "Valeo 22",  "Valeo 11p", "Valeo 17",  "",          "Aptus 17",
    "Aptus 22", "Aptus 75",  "Aptus 65",  "Aptus 54S", "Aptus 65S", "Aptus 75S",
    "AFi 5",    "AFi 6",     "AFi 7",     "",          "",          "",
    "",         "",          "",          "",          "",          "",
    "",         "",          "",          "",          "",          "",
    "",         "",          "AFi-II 12",
};
// clang-format on
static_assert(kBackNames[11] == "Aptus 17" && kBackNames[20] == "AFi 7");
static_assert(kBackNames[38] == "AFi-II 12");

// Characters up to the first zero.
template <std::size_t N>
std::string_view TextOf(const std::array<char, N>& characters) {
  const auto end = std::find(characters.begin(), characters.end(), '\0');
  return {characters.data(), static_cast<std::size_t>(end - characters.begin())};
}

template <std::size_t N>
std::array<char, N> ReadText(FileStream& stream) {
  std::array<std::uint8_t, N> bytes;
  std::array<char, N> characters;
  static_cast<void>(stream.Read(bytes));
  std::copy(bytes.begin(), bytes.end(), characters.begin());
  return characters;
}

// Stores the name of the back whose number stands at the stream's position, unless a model is
// known.
void StoreBackName(VxMetadata& store) {
  TagMap& table = *store.m_fnGetBlock(BLOCK_IFD0);
  const auto digits = ReadText<kNumberSize>(*store.m_pFile);
  const std::int32_t number = ParseInteger(TextOf(digits));
  if (number < 0 || static_cast<std::size_t>(number) >= kBackNames.size()) return;
  const std::string name(kBackNames[static_cast<std::size_t>(number)]);
  if (name.empty() || table.Contains(kModelTag)) return;

  std::vector<std::uint8_t> bytes(name.begin(), name.end());
  bytes.push_back(0);
  SetTagValue(store.m_fnFindOrInsert(table, kModelTag), kModelTag, TYPE_ASCII, bytes,
              store.Memory());
}

}  // namespace

// A record's data is walked as a list first, then the record behind it. A list does not end with
// the record that holds it, so the same records are met again and again; a second visit could
// change nothing, and each position is visited once.
void VxMetadata::m_fnParseLeafData(std::uint32_t position, ByteOrder order) {
  FileStream& stream = *m_pFile;
  std::vector<std::uint32_t> pending = {position};
  std::set<std::uint32_t> visited;
  while (!pending.empty()) {
    const std::uint32_t start = pending.back();
    pending.pop_back();
    if (!visited.insert(start).second) continue;
    stream.Seek(start);
    if (stream.ReadU32(order) != kRecordMagic) continue;
    if (!stream.Budget().TakeEntry()) return;

    stream.Seek(stream.Position() + 4);
    const auto name = ReadText<kNameSize>(stream);
    const std::uint32_t size = stream.ReadU32(order);
    const auto data = static_cast<std::uint32_t>(stream.Position());
    if (TextOf(name) == kBackTypeName) StoreBackName(*this);
    pending.push_back(data + size);
    pending.push_back(data);
  }
}
