#include "merge/MergeTest.h"

#include "core/DebugLog.h"

namespace test {

namespace {

constexpr std::string_view kPrefix = "[MERGE]";

Lines g_lines;

// Every line is prefix, text and line feed.
void Collect(const char* line) {
  std::string_view text = line;
  ASSERT_TRUE(text.starts_with(kPrefix));
  ASSERT_TRUE(text.ends_with('\n'));
  text.remove_prefix(kPrefix.size());
  text.remove_suffix(1);
  g_lines.emplace_back(text);
}

Bytes HostU16(std::uint16_t value) {
  return U16(value, kHostByteOrder);
}
Bytes HostU32(std::uint32_t value) {
  return U32(value, kHostByteOrder);
}

}  // namespace

void MergeTest::SetUp() {
  SetDebugLogPrefix("[MERGE]");
  SetDebugLogSink(&Collect);
  g_bDebugLogEnabled = 1;
}

void MergeTest::TearDown() {
  g_bDebugLogEnabled = 0;
  SetDebugLogSink(nullptr);
}

void MergeTest::Put(std::int32_t block, std::uint32_t key, std::uint32_t type, const Bytes& bytes) {
  TagEntry& entry = m_store.m_fnGetBlock(block)->FindOrInsert(key);
  SetTagValue(entry, key, type, bytes, m_store.Memory());
  entry.m_nCount = 1;
}

void MergeTest::PutShort(std::int32_t block, std::uint32_t key, std::uint16_t value) {
  Put(block, key, TYPE_SHORT, HostU16(value));
}

void MergeTest::PutLong(std::int32_t block, std::uint32_t key, std::uint32_t value) {
  Put(block, key, TYPE_LONG, HostU32(value));
}

void MergeTest::PutRational(std::int32_t block, std::uint32_t key, std::uint32_t numerator,
                            std::uint32_t denominator) {
  Put(block, key, TYPE_RATIONAL, Rationals({{numerator, denominator}}));
}

void MergeTest::PutXmp(std::uint32_t key, WideStringView text) {
  Put(BLOCK_XMP, key, TYPE_WIDE_TEXT, WideBytes(text));
}

void MergeTest::PutWithoutData(std::int32_t block, std::uint32_t key, std::uint32_t type,
                               std::uint32_t size) {
  TagEntry& entry = m_store.m_fnGetBlock(block)->FindOrInsert(key);
  DropTagData(entry);
  entry.m_nTag = key;
  entry.m_nType = type;
  entry.m_nSize = size;
}

Lines MergeTest::Merge() {
  g_lines.clear();
  EXPECT_EQ(m_store.MergeMetadata(), 0);
  return g_lines;
}

Stored MergedShort(std::uint32_t tag, std::uint16_t value) {
  return {tag, TYPE_SHORT, 0, Hex(HostU16(value))};
}

Stored MergedRational(std::uint32_t tag, std::uint32_t numerator, std::uint32_t denominator,
                      std::uint32_t type) {
  return {tag, type, 0, Hex(Rationals({{numerator, denominator}}))};
}

Stored MergedText(std::uint32_t tag, std::string_view text) {
  return {tag, TYPE_ASCII, 0, Hex(Join({Text(text), Zeros(1)}))};
}

Bytes Rationals(const std::vector<std::pair<std::uint32_t, std::uint32_t>>& values) {
  Bytes bytes;
  for (const auto& [numerator, denominator] : values) {
    bytes = Join({bytes, HostU32(numerator), HostU32(denominator)});
  }
  return bytes;
}

}  // namespace test
