#include "FuzzChecks.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "base/TypeSizes.h"
#include "com/Unknown.h"
#include "core/RecordExtractors.h"
#include "xmp/XmpPropertyTable.h"

namespace fuzz {
namespace {

// An input of 64 KiB is finished in 50 ms. A run parses it several times; sanitizers, coverage and
// a busy machine make each of these some twenty times as long.
constexpr std::clock_t kMaxRunTime = 3 * CLOCKS_PER_SEC;

// Room for what most runs dump.
constexpr std::size_t kUsualDump = 8192;

using Bytes = test::Bytes;
using Data = std::span<const std::uint8_t>;

void Append(Bytes& dump, Data bytes) {
  dump.insert(dump.end(), bytes.begin(), bytes.end());
}

void AppendNumbers(Bytes& dump, std::initializer_list<std::uint32_t> numbers) {
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(numbers.begin());
  Append(dump, {bytes, numbers.size() * sizeof(std::uint32_t)});
}

void AppendTable(Bytes& dump, const TagMap& table) {
  for (const auto& [key, entry] : table) AppendEntry(dump, key, entry);
}

bool EndsInZero(Data text) {
  return text.empty() || text.back() == 0;
}

bool EndsInWideZero(Data text) {
  return text.empty() || (text.size() % 2 == 0 && text.back() == 0 && text[text.size() - 2] == 0);
}

bool IsOneOf(std::uint32_t value, std::initializer_list<std::uint32_t> values) {
  return std::ranges::find(values, value) != values.end();
}

void RequireSoundIptc(const TagEntry& entry) {
  Require(IsOneOf(entry.m_nType, {TYPE_LONG, TYPE_WIDE_TEXT}), "an IPTC value is text or numbers");
  Require(entry.m_nType != TYPE_LONG || entry.m_nSize % 4 == 0, "IPTC numbers have 32 bits");
}

void RequireSoundXmp(const TagEntry& entry) {
  if (entry.m_nTag == kXmpHasRegionsTag) {
    Require(entry.m_nType == TYPE_SLONG && entry.m_nSize == 4, "the mark of regions is a number");
  } else {
    Require(entry.m_nType == TYPE_WIDE_TEXT, "an XMP value is text");
  }
}

// A region without a type leaves an entry of zeros.
void RequireSoundRegion(const TagEntry& entry) {
  const bool isEmpty =
      entry.m_nTag == 0 && entry.m_nType == 0 && entry.m_nSize == 0 && entry.m_pData == nullptr;
  Require(isEmpty || (entry.m_nTag == kXmpRegionTag && entry.m_nType == TYPE_WIDE_TEXT),
          "a region is text or nothing");
}

constexpr std::uint32_t kFirstIccTag = 256;

void RequireSoundIcc(const TagEntry& entry) {
  Require(IsOneOf(entry.m_nType, {TYPE_LONG, TYPE_ASCII, TYPE_BYTE}),
          "a value of a profile is a number, text or bytes");
  // By design a tag's text is what stands there, with or without a zero.
  if (entry.m_nTag >= kFirstIccTag) return;
  Require(entry.m_nType != TYPE_ASCII || EndsInZero(TagBytes(entry)),
          "a header field's text ends in its zero");
  Require(entry.m_nSize == ValueSize(entry.m_nType, entry.m_nCount),
          "a header field's size is that of its type times its count");
}

void RequireSoundEntry(std::int32_t block, std::uint32_t key, const TagEntry& entry) {
  Require(block == BLOCK_XMP_REGIONS || entry.m_nTag == key, "an entry's tag is its key");
  switch (block) {
    case BLOCK_IPTC:
      RequireSoundIptc(entry);
      break;
    case BLOCK_ICC:
      RequireSoundIcc(entry);
      break;
    case BLOCK_XMP:
      RequireSoundXmp(entry);
      break;
    case BLOCK_XMP_REGIONS:
      RequireSoundRegion(entry);
      break;
    default:
      RequireSoundValue(entry);
  }
  if (entry.m_nType == TYPE_WIDE_TEXT) {
    Require(EndsInWideZero(TagBytes(entry)), "a stored UTF-16 text ends in its zero");
  }
}

// Returns the bytes of data.
std::uint64_t RequireSoundTable(std::int32_t block, const TagMap& table) {
  std::uint64_t bytes = 0;
  for (const auto& [key, entry] : table) {
    RequireSoundEntry(block, key, entry);
    bytes += TagBytes(entry).size();
  }
  return bytes;
}

struct RecordRule {
  std::uint32_t type;
  std::uint32_t valueSize;
};

// clang-format off
constexpr std::array kRecordRules = {
    RecordRule{LMD_RECORD_INT32,     4},
    RecordRule{LMD_RECORD_SRATIONAL, 8},
    RecordRule{LMD_RECORD_DOUBLE,    8},
    RecordRule{LMD_RECORD_ASCII,     1},
    RecordRule{LMD_RECORD_WIDE_TEXT, 2},
    RecordRule{LMD_RECORD_BYTES,     1},
    RecordRule{LMD_RECORD_UINT32,    4},
    RecordRule{LMD_RECORD_URATIONAL, 8},
};
// clang-format on

// By design the merge files any value of IFD0 as an ISO speed of 16-bit numbers, which may end in
// half a one.
bool HasAnySize(const CInfoRecord& record) {
  constexpr std::uint32_t kIsoSpeed = 0x8827;
  return record.m_nGroup == CATEGORY_EXIF && record.m_nId == kIsoSpeed;
}

// By design dates are what stands under their tags, and the texts of a profile what stands there.
bool IsAnyText(const CInfoRecord& record) {
  return record.m_nGroup == CATEGORY_DATES || record.m_nGroup == CATEGORY_ICC;
}

void RequireSoundRecord(const CInfoRecord& record, std::uint32_t mask) {
  Require(std::has_single_bit(record.m_nGroup) && (record.m_nGroup & mask & kFullMask) != 0,
          "a record's group is a category of the mask");
  Require(record.m_pData != nullptr, "a record has data");
  Require(record.m_dValue == 0, "a record's double is 0");
  const auto rule = std::ranges::find(kRecordRules, record.m_nType, &RecordRule::type);
  Require(rule != kRecordRules.end(), "a record's type is known");
  Require(record.m_nSize % rule->valueSize == 0 || HasAnySize(record),
          "a record holds whole values");

  const Data data(record.m_pData, record.m_nSize);
  if (record.m_nType == LMD_RECORD_ASCII && !IsAnyText(record)) {
    Require(EndsInZero(data), "a record's text ends in its zero");
  }
  if (record.m_nType == LMD_RECORD_WIDE_TEXT) {
    Require(EndsInWideZero(data), "a record's UTF-16 text ends in its zero");
  }
}

void RequireSoundLine(const char* line) {
  constexpr std::size_t kMaxMessage = 1022;
  const std::string_view text = line;
  const std::string_view prefix = g_strLogPrefix;
  Require(text.starts_with(prefix), "a line of the log begins with the prefix");
  Require(text.ends_with('\n'), "a line of the log ends in a line feed");
  Require(text.size() <= prefix.size() + kMaxMessage + 1, "a line of the log is cut");
}

}  // namespace

void Require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "failed: %s\n", what);
  std::abort();
}

RunChecks::RunChecks() : m_objects(m_cObjects), m_start(std::clock()) {}

RunChecks::~RunChecks() {
  Require(m_cObjects == m_objects, "as many objects live after the run as before");
  Require(std::clock() - m_start <= kMaxRunTime, "a run takes no longer than its limit");
}

void AppendEntry(Bytes& dump, std::uint32_t key, const TagEntry& entry) {
  AppendNumbers(dump, {key, entry.m_nTag, entry.m_nType, entry.m_nCount, entry.m_nSize,
                       std::uint32_t{entry.m_pData != nullptr}});
  Append(dump, TagBytes(entry));
}

Bytes DumpStore(VxMetadata& store) {
  Bytes dump;
  dump.reserve(kUsualDump);
  for (std::int32_t block = BLOCK_IFD0; block <= kBlockCount; ++block) {
    AppendNumbers(dump, {static_cast<std::uint32_t>(block)});
    AppendTable(dump, *store.m_fnGetBlock(block));
  }
  for (const auto& [block, table] : store.m_mapSubIfd) {
    AppendNumbers(dump, {static_cast<std::uint32_t>(block)});
    AppendTable(dump, table);
  }
  AppendNumbers(dump, {store.m_nImageWidth, store.m_nImageHeight, store.m_nThumbnailSize,
                       store.m_nThumbnailWidth, store.m_nThumbnailHeight, store.m_nThumbnailFormat,
                       store.m_nTiffMagic, store.m_nEmbeddedJpegPos});
  if (store.m_pThumbnail) Append(dump, {store.m_pThumbnail.get(), store.m_nThumbnailSize});
  return dump;
}

OpenLog::OpenLog() : m_sinkBefore(SetDebugLogSink(&RequireSoundLine)) {
  g_bDebugLogEnabled = 1;
}

OpenLog::~OpenLog() {
  g_bDebugLogEnabled = 0;
  SetDebugLogSink(m_sinkBefore);
}

Bytes DumpRecords(std::span<const CInfoRecord> records) {
  Bytes dump;
  dump.reserve(kUsualDump);
  for (const CInfoRecord& record : records) {
    AppendNumbers(dump, {record.m_nGroup, record.m_nId, record.m_nType, record.m_nSize});
    Append(dump, {record.m_pData, record.m_nSize});
  }
  return dump;
}

void RequireSoundValue(const TagEntry& entry) {
  Require(
      IsOneOf(entry.m_nType, {TYPE_BYTE, TYPE_ASCII, TYPE_SHORT, TYPE_LONG, TYPE_RATIONAL,
                              TYPE_UNDEFINED, TYPE_SSHORT, TYPE_SLONG, TYPE_SRATIONAL, TYPE_IFD}),
      "a value of a directory has a type that is stored");
  const bool isText = entry.m_nType == TYPE_ASCII;
  Require(!isText || EndsInZero(TagBytes(entry)), "a stored text ends in its zero");
  if (entry.m_nCount == 0) return;
  const std::uint64_t size = ValueSize(entry.m_nType, entry.m_nCount);
  Require(entry.m_nSize == size || (isText && entry.m_nSize == size + 1),
          "a value's size is that of its type times its count");
}

void RequireSoundStore(VxMetadata& store) {
  std::uint64_t bytes = store.m_pThumbnail ? store.m_nThumbnailSize : 0;
  for (std::int32_t block = BLOCK_IFD0; block <= kBlockCount; ++block) {
    bytes += RequireSoundTable(block, *store.m_fnGetBlock(block));
  }
  for (const auto& [block, table] : store.m_mapSubIfd) bytes += RequireSoundTable(block, table);
  Require(bytes <= kMaxStoredBytes, "all data together are within the budget");
  Require(IsOneOf(store.m_nThumbnailFormat, {THUMBNAIL_JPEG, THUMBNAIL_RGB}),
          "the thumbnail has a format");
}

void RequireSoundRecords(std::span<const CInfoRecord> records, std::uint32_t mask) {
  for (const CInfoRecord& record : records) RequireSoundRecord(record, mask);
}

}  // namespace fuzz
