// ICC profiles: the header and the tags that are kept (ICC.1, sections 7.2 and 7.3). All numbers
// are big-endian.

#include <algorithm>
#include <array>
#include <string_view>

#include "base/ByteCursor.h"
#include "base/Guarded.h"
#include "base/TypeSizes.h"
#include "exif/VxMetadata.h"

namespace {

constexpr std::size_t kHeaderSize = 128;
constexpr std::size_t kMaxFieldSize = 16;

struct HeaderField {
  std::uint32_t key;
  std::size_t offset;
  std::size_t size;
  std::uint32_t type;  // as stored: a LONG in host order, an ASCII with a final zero
};

// clang-format off
constexpr std::array kHeaderFields = {
    HeaderField{ 1,  0,  4, TYPE_LONG},   // profile size
    HeaderField{ 2,  4,  4, TYPE_ASCII},  // preferred CMM
    HeaderField{ 3,  8,  4, TYPE_BYTE},   // version
    HeaderField{ 4, 12,  4, TYPE_ASCII},  // device class
    HeaderField{ 5, 16,  4, TYPE_ASCII},  // colour space
    HeaderField{ 6, 20,  4, TYPE_ASCII},  // connection space
    HeaderField{ 7, 24, 12, TYPE_BYTE},   // date and time
    HeaderField{ 8, 36,  4, TYPE_ASCII},  // file signature
    HeaderField{ 9, 40,  4, TYPE_ASCII},  // primary platform
    HeaderField{10, 44,  4, TYPE_BYTE},   // flags
    HeaderField{11, 48,  4, TYPE_ASCII},  // device manufacturer
    HeaderField{12, 52,  4, TYPE_ASCII},  // device model
    HeaderField{13, 56,  8, TYPE_BYTE},   // device attributes
    HeaderField{14, 64,  4, TYPE_BYTE},   // rendering intent
    HeaderField{15, 68, 12, TYPE_BYTE},   // illuminant
    HeaderField{16, 80,  4, TYPE_ASCII},  // creator
    HeaderField{17, 84, 16, TYPE_BYTE},   // profile ID
};

struct ProfileTag {
  std::uint32_t key;
  std::string_view signature;
};

constexpr std::array kProfileTags = {
    ProfileTag{256, "cprt"},
    ProfileTag{257, "desc"},
    ProfileTag{258, "wtpt"},
    ProfileTag{259, "bkpt"},
    ProfileTag{260, "rTRC"},
    ProfileTag{261, "gTRC"},
    ProfileTag{262, "bTRC"},
    ProfileTag{263, "rXYZ"},
    ProfileTag{264, "gXYZ"},
    ProfileTag{265, "bXYZ"},
    ProfileTag{266, "dmnd"},
};

struct DataType {
  std::string_view signature;
  std::size_t headerSize;  // skipped in front of the value
  std::uint32_t type;
};

constexpr std::array kDataTypes = {
    DataType{"desc", 12, TYPE_ASCII},
    DataType{"text",  8, TYPE_ASCII},
};
// clang-format on
constexpr DataType kOtherDataType = {"", 8, TYPE_BYTE};

bool IsSignature(std::span<const std::uint8_t> bytes, std::string_view signature) {
  return std::equal(bytes.begin(), bytes.end(), signature.begin(), signature.end());
}

// Stores a header field; an ASCII gets its final zero.
void StoreField(VxMetadata& store, const HeaderField& field, std::span<const std::uint8_t> bytes) {
  std::array<std::uint8_t, kMaxFieldSize + 1> buffer = {};
  std::copy(bytes.begin(), bytes.end(), buffer.begin());
  auto value = std::span(buffer).first(field.size + (field.type == TYPE_ASCII ? 1 : 0));
  if (field.type == TYPE_LONG) ToHostOrder32(value, ByteOrder::BigEndian);

  TagEntry& entry = store.m_fnFindOrInsert(*store.m_fnGetBlock(BLOCK_ICC), field.key);
  SetTagValue(entry, field.key, field.type, value, store.Memory());
  entry.m_nCount = static_cast<std::uint32_t>(value.size() / TypeSize(field.type));
}

// False when a field does not lie wholly in the profile.
bool StoreHeader(VxMetadata& store, std::span<const std::uint8_t> profile) {
  ByteCursor cursor(profile, ByteOrder::BigEndian);
  for (const HeaderField& field : kHeaderFields) {
    cursor.Seek(field.offset);
    const auto bytes = cursor.ReadBytes(field.size);
    if (cursor.WasShort()) return false;
    StoreField(store, field, bytes);
  }
  return true;
}

const DataType& DataTypeOf(std::span<const std::uint8_t> signature) {
  for (const DataType& type : kDataTypes) {
    if (IsSignature(signature, type.signature)) return type;
  }
  return kOtherDataType;
}

// Stores a tag's data behind its type header; data shorter than that is skipped.
void StoreTag(VxMetadata& store, std::uint32_t key, std::span<const std::uint8_t> data) {
  if (data.size() < 4) return;
  const DataType& type = DataTypeOf(data.first(4));
  if (data.size() < type.headerSize) return;
  TagMap& table = *store.m_fnGetBlock(BLOCK_ICC);
  SetTagValue(store.m_fnFindOrInsert(table, key), key, type.type, data.subspan(type.headerSize),
              store.Memory());
}

void StoreTags(VxMetadata& store, std::span<const std::uint8_t> profile) {
  ByteCursor cursor(profile, ByteOrder::BigEndian);
  cursor.Seek(kHeaderSize);
  const std::uint32_t tags = cursor.ReadU32();
  for (std::uint32_t i = 0; i < tags; ++i) {
    const auto signature = cursor.ReadBytes(4);
    const std::uint32_t offset = cursor.ReadU32();
    const std::uint32_t size = cursor.ReadU32();
    if (cursor.WasShort() || !store.Budget().TakeEntry()) return;
    if (offset > profile.size() || size > profile.size() - offset) continue;
    const auto known = std::ranges::find_if(
        kProfileTags, [&](const ProfileTag& tag) { return IsSignature(signature, tag.signature); });
    if (known != kProfileTags.end()) StoreTag(store, known->key, profile.subspan(offset, size));
  }
}

}  // namespace

HRESULT VxMetadata::m_fnParseICCProfile(std::span<const std::uint8_t> profile) {
  if ((m_nParseFlags & PARSE_ICC) == 0) return S_OK;
  const auto read = [&] {
    if (StoreHeader(*this, profile) && profile.size() > kHeaderSize) StoreTags(*this, profile);
    return S_OK;
  };
  return Guarded(read, E_UNEXPECTED);
}
