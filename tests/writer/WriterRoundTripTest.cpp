// What the writer writes is what the metadata store reads.

#include <algorithm>
#include <map>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/Jpeg.h"
#include "support/Records.h"
#include "support/StoreFile.h"
#include "writer/AcceptedTags.h"
#include "writer/VxMetadataWriter.h"

namespace test {
namespace {

constexpr std::size_t kMostValues = 1024;  // that the store keeps of one tag

Bytes BlockOf(const Records& records, const Bytes& thumbnail = {}) {
  VxMetadataWriter writer(0);
  writer.SetThumbnail(thumbnail.data(), static_cast<std::uint32_t>(thumbnail.size()));
  EXPECT_EQ(writer.SetRecords(records.Data(), records.Count()), S_OK);
  EXPECT_EQ(writer.BuildBlock(), S_OK);
  return {writer.Block().begin(), writer.Block().end()};
}

std::int32_t BlockOfGroup(std::uint32_t group) {
  const std::map<std::uint32_t, std::int32_t> blocks = {
      {2, BLOCK_IFD0}, {4, BLOCK_EXIF}, {8, BLOCK_GPS}};
  return blocks.at(group);
}

bool IsShort(TagType type) {
  return type == TYPE_SHORT || type == TYPE_SSHORT;
}

std::size_t RecordUnit(TagType type) {
  return IsShort(type) ? 4 : TypeSize(type);
}

// What the store holds of a record that was written with a type.
Stored ExpectedOf(std::uint16_t tag, TagType type, const Bytes& record) {
  const std::size_t unit = RecordUnit(type);
  const std::size_t count = std::min(record.size() / unit, kMostValues);
  Bytes bytes(record.begin(), record.begin() + static_cast<std::ptrdiff_t>(count * unit));
  if (type == TYPE_ASCII && bytes.back() != 0) bytes.push_back(0);
  if (IsShort(type)) {
    Bytes halves;
    for (std::size_t i = 0; i < bytes.size(); i += 4)
      halves.insert(halves.end(), {bytes[i], bytes[i + 1]});
    bytes = halves;
  }
  return {tag, type, static_cast<std::uint32_t>(count), Hex(bytes)};
}

// A value of some size for each type, ending in a byte that is not 0.
Bytes SampleOf(TagType type, std::size_t count) {
  Bytes bytes(count * RecordUnit(type));
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<std::uint8_t>(0x41 + i % 80);
  return bytes;
}

void ReadsBackEveryTag(std::size_t count) {
  Records records;
  for (const AcceptedTags& row : AllAcceptedTags()) {
    for (const std::uint16_t tag : row.tags)
      records.Binary(row.group, tag, SampleOf(row.type, count));
  }
  StoreFile file(Jpeg().Exif(BlockOf(records)).Scan().Build());
  ASSERT_EQ(file.ParseJpeg(), S_OK);
  for (const AcceptedTags& row : AllAcceptedTags()) {
    for (const std::uint16_t tag : row.tags) {
      EXPECT_EQ(Find(file.Store(), BlockOfGroup(row.group), tag),
                ExpectedOf(tag, row.type, SampleOf(row.type, count)))
          << "group " << row.group << " tag " << tag << " count " << count;
    }
  }
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0).size(), 10U);
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF).size(), 56U);
  EXPECT_EQ(Keys(file.Store(), BLOCK_GPS).size(), 31U);
}

TEST(WriterRoundTrip, EveryAcceptedTagIsReadBack) {
  for (const std::size_t count : {1U, 2U, 3U, 4U, 5U, 50U}) ReadsBackEveryTag(count);
}

TEST(WriterRoundTrip, LongValuesAreClampedByTheReaderAlone) {
  for (const TagType type : {TYPE_ASCII, TYPE_RATIONAL}) {
    const std::uint16_t tag = type == TYPE_ASCII ? 270 : 282;
    Records records;
    records.Binary(2, tag, SampleOf(type, 1500));
    StoreFile file(Jpeg().Exif(BlockOf(records)).Build());
    ASSERT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, tag), ExpectedOf(tag, type, SampleOf(type, 1500)));
  }
}

TEST(WriterRoundTrip, ThumbnailIsReadBack) {
  const Bytes thumbnail = Jpeg().Frame(160, 120).Scan().Build();
  Records records;
  records.Ascii(2, 271, "Cam").Integers(4, 34855, {400});
  StoreFile file(Jpeg().Exif(BlockOf(records, thumbnail)).Build());
  ASSERT_EQ(file.ParseJpeg(), S_OK);
  const VxMetadata& store = file.Store();
  ASSERT_EQ(store.m_nThumbnailSize, thumbnail.size());
  EXPECT_TRUE(std::equal(thumbnail.begin(), thumbnail.end(), store.m_pThumbnail.get()));
  EXPECT_EQ(store.m_nThumbnailWidth, 160U);
  EXPECT_EQ(store.m_nThumbnailHeight, 120U);
  EXPECT_EQ(store.m_nThumbnailFormat, 1U);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD1),
            (std::vector<std::uint32_t>{0x0103, 0x011A, 0x011B, 0x0128, 0x0201, 0x0202}));
}

TEST(WriterRoundTrip, HostPointersLeadNowhere) {
  Records records;
  records.Integers(2, 34665, {8}).Integers(2, 34853, {8}).Ascii(2, 271, "Cam");
  StoreFile file(Jpeg().Exif(BlockOf(records)).Build());
  ASSERT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), std::vector<std::uint32_t>{271});
  EXPECT_TRUE(Keys(file.Store(), BLOCK_EXIF).empty());
  EXPECT_TRUE(Keys(file.Store(), BLOCK_GPS).empty());
}

// A list of random records and what the store is to hold of it.
class RandomRecords {
 public:
  explicit RandomRecords(std::uint32_t seed) : m_random(seed) {
    std::size_t left = 60000;
    for (int i = Below(80); i >= 0; --i) {
      const AcceptedTags& row = AllAcceptedTags()[static_cast<std::size_t>(
          Below(static_cast<int>(AllAcceptedTags().size())))];
      const std::uint16_t tag =
          row.tags[static_cast<std::size_t>(Below(static_cast<int>(row.tags.size())))];
      const Bytes bytes = RandomBytes(SizeBelow(left));
      left -= std::min(left, bytes.size() + 24);
      m_records.Binary(row.group, tag, bytes);
      if (bytes.size() < RecordUnit(row.type)) continue;
      m_expected[{row.group, tag}] = ExpectedOf(tag, row.type, bytes);
    }
    m_thumbnail = RandomBytes(SizeBelow(left));
  }

  const Records& List() const { return m_records; }
  const Bytes& Thumbnail() const { return m_thumbnail; }
  const std::map<std::pair<std::uint32_t, std::uint32_t>, Stored>& Expected() const {
    return m_expected;
  }

 private:
  int Below(int bound) { return static_cast<int>(m_random() % static_cast<std::uint32_t>(bound)); }

  // Mostly small, at times larger than what the store keeps.
  std::size_t SizeBelow(std::size_t bound) {
    const int largest = Below(10) == 0 ? 9000 : 20;
    return std::min(static_cast<std::size_t>(Below(largest)), bound);
  }

  Bytes RandomBytes(std::size_t size) {
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(m_random());
    return bytes;
  }

  std::mt19937 m_random;
  Records m_records;
  Bytes m_thumbnail;
  std::map<std::pair<std::uint32_t, std::uint32_t>, Stored> m_expected;
};

TEST(WriterRoundTrip, RandomRecordsAreReadBack) {
  for (std::uint32_t seed = 0; seed < 300; ++seed) {
    const RandomRecords random(seed);
    StoreFile file(Jpeg().Exif(BlockOf(random.List(), random.Thumbnail())).Build());
    ASSERT_EQ(file.ParseJpeg(), S_OK);
    std::size_t found = 0;
    for (const std::int32_t block : {BLOCK_IFD0, BLOCK_EXIF, BLOCK_GPS}) {
      found += Keys(file.Store(), block).size();
    }
    ASSERT_EQ(found, random.Expected().size()) << "seed " << seed;
    for (const auto& [key, stored] : random.Expected()) {
      ASSERT_EQ(Find(file.Store(), BlockOfGroup(key.first), key.second), stored) << "seed " << seed;
    }
    const bool hasIfd1 = !random.Thumbnail().empty() && !random.Expected().empty();
    ASSERT_EQ(file.Store().m_nThumbnailSize, hasIfd1 ? random.Thumbnail().size() : 0U);
  }
}

}  // namespace
}  // namespace test
