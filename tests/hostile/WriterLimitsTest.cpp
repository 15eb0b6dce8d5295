// Records and thumbnails that fill the block of a new EXIF segment to its last byte, and that are
// larger by one.
//
// The sizes: a header of 8 bytes; a directory of 2, 12 for each entry, and 4; a value of more than
// 4 bytes behind its directory. The block has 64,000.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "Bounds.h"
#include "com/WriteTestSupport.h"
#include "support/Jpeg.h"
#include "support/StoreFile.h"

namespace test {
namespace {

constexpr std::uint32_t kIfd0 = 2;
constexpr std::uint32_t kExif = 4;
constexpr std::uint32_t kGps = 8;
constexpr std::size_t kCapacity = 64'000;

// What writing gave, and the file if there is one.
struct Written {
  HRESULT result = S_OK;
  bool exists = false;
  Bytes file;
};

std::uint64_t AddressOf(const Bytes& bytes) {
  return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(bytes.data()));
}

Written Write(const Records& records, const Bytes& thumbnail = {}) {
  const LumidexObject object;
  const Bytes contents = Jpeg().Scan().Build();
  const TempFile source(contents);
  const NewPath output;
  Written written;
  written.result = Bounded(kSmallInput, [&] {
    RemoveFile(output.Path());
    return object->WriteMetadata(source.Path(), output.Path(), records.Count(), records.Data(),
                                 static_cast<std::uint32_t>(thumbnail.size()), AddressOf(thumbnail),
                                 nullptr, 0);
  });
  written.exists = output.Exists();
  if (written.exists) written.file = output.Read();
  EXPECT_EQ(source.Read(), contents);
  return written;
}

// The file has the full block, and the store reads a value from it.
void ExpectFull(const Written& written, std::int32_t block, std::uint32_t tag,
                const Stored& expected) {
  ASSERT_EQ(written.result, S_OK);
  EXPECT_EQ(written.file.size(), 2 + 10 + kCapacity + Jpeg().Scan().Build().size() - 2);
  // SOI, then the marker and the length of block, signature and the length itself.
  EXPECT_EQ(Hex(std::span(written.file).first(6)), "ffd8ffe1fa08");
  StoreFile store(written.file);
  EXPECT_EQ(store.ParseJpeg(), S_OK);
  EXPECT_EQ(Find(store.Store(), block, tag), expected);
}

void ExpectRefused(const Written& written) {
  EXPECT_EQ(written.result, LMD_E_BUFFER_TOO_SMALL);
  EXPECT_FALSE(written.exists);
}

// A text, and the first 1024 bytes of it, which is what the store keeps of a value.
Records TextOf(std::size_t size) {
  Records records;
  records.Binary(kIfd0, 270, Bytes(size, 'x'));
  return records;
}

TEST(HostileWriter, TextToTheLastByte) {
  constexpr std::size_t kRoom = kCapacity - 8 - (2 + 12 + 4);
  const Stored expected = {270, 2, 1024, Hex(Bytes(1024, 'x')) + "00"};
  ExpectFull(Write(TextOf(kRoom)), BLOCK_IFD0, 270, expected);
  for (const std::size_t more : {1U, 2U, 1'000U, 1'536U, 100'000U, 10'000'000U}) {
    ExpectRefused(Write(TextOf(kRoom + more)));
  }
}

// Below, at and above the room of an entry itself.
TEST(HostileWriter, TextInTheEntryNeedsNoOtherRoom) {
  constexpr std::size_t kRoom = kCapacity - 8 - (2 + 2 * 12 + 4);
  for (std::size_t size = 1; size <= 6; ++size) {
    const std::size_t taken = size <= 4 ? 0 : size;
    Records full = TextOf(kRoom - taken);
    full.Binary(kIfd0, 271, Bytes(size, 'm'));
    ExpectFull(Write(full), BLOCK_IFD0, 271,
               {271, 2, static_cast<std::uint32_t>(size), Hex(Bytes(size, 'm')) + "00"});
    Records tooLarge = TextOf(kRoom - taken + 1);
    tooLarge.Binary(kIfd0, 271, Bytes(size, 'm'));
    ExpectRefused(Write(tooLarge));
  }
}

// A record has 32 bits for each of them, the block 16.
TEST(HostileWriter, ShortsToTheLastByte) {
  constexpr std::size_t kRoom = kCapacity - 8 - (2 + 12 + 4) - (2 + 12 + 4);
  constexpr std::size_t kCount = kRoom / 2;
  static_assert(kRoom % 2 == 0);
  std::string hex;
  for (int i = 0; i < 1024; ++i) hex += "0201";
  for (const std::size_t odd : {0U, 1U, 2U, 3U}) {
    Bytes bytes;
    for (std::size_t i = 0; i <= kCount; ++i) bytes.insert(bytes.end(), {2, 1, 9, 9});
    Records full;
    bytes.resize(4 * kCount + odd);
    full.Binary(kExif, 37396, bytes);
    ExpectFull(Write(full), BLOCK_EXIF, 37396, {37396, 3, 1024, hex});
  }
  Records tooLarge;
  tooLarge.Binary(kExif, 37396, Bytes(4 * kCount + 4, 1));
  ExpectRefused(Write(tooLarge));
}

TEST(HostileWriter, RationalsUpToTheLastWholeOne) {
  constexpr std::size_t kCount = (kCapacity - 8 - (2 + 12 + 4)) / 8;
  Records full;
  full.Binary(kIfd0, 282, Bytes(8 * kCount + 7, 1));
  const Written written = Write(full);
  ASSERT_EQ(written.result, S_OK);
  EXPECT_EQ(written.file.size(), 2 + 10 + 8 + 18 + 8 * kCount + Jpeg().Scan().Build().size() - 2);
  Records tooLarge;
  tooLarge.Binary(kIfd0, 282, Bytes(8 * kCount + 8, 1));
  ExpectRefused(Write(tooLarge));
}

// Whichever directory the last value stands in.
TEST(HostileWriter, ThreeDirectoriesToTheLastByte) {
  constexpr std::size_t kRoom = kCapacity - 8 - (2 + 3 * 12 + 4) - 2 * (2 + 12 + 4);
  const auto write = [](std::size_t ifd0, std::size_t exif, std::size_t gps) {
    Records records = TextOf(ifd0);
    records.Binary(kExif, 36864, Bytes(exif, 'e')).Binary(kGps, 27, Bytes(gps, 'g'));
    return Write(records);
  };
  const Stored version = {36864, 7, 5, "6565656565"};
  const Stored method = {27, 7, 5, "6767676767"};
  ExpectFull(write(kRoom - 10, 5, 5), BLOCK_EXIF, 36864, version);
  ExpectFull(write(kRoom - 10, 5, 5), BLOCK_GPS, 27, method);
  ExpectFull(write(5, kRoom - 10, 5), BLOCK_GPS, 27, method);
  ExpectFull(write(5, 5, kRoom - 10), BLOCK_EXIF, 36864, version);
  ExpectRefused(write(kRoom - 9, 5, 5));
  ExpectRefused(write(5, kRoom - 9, 5));
  ExpectRefused(write(5, 5, kRoom - 9));
}

// The directory of the thumbnail has six entries and two rationals.
TEST(HostileWriter, ThumbnailToTheLastByte) {
  constexpr std::size_t kRoom = kCapacity - 8 - (2 + 12 + 4) - (2 + 6 * 12 + 4) - 2 * 8;
  Records records;
  records.Ascii(kIfd0, 271, "Cam");
  ExpectFull(Write(records, Bytes(kRoom, 7)), BLOCK_IFD0, 271, {271, 2, 4, "43616d00"});
  ExpectRefused(Write(records, Bytes(kRoom + 1, 7)));
  // Values without any room for a directory of a thumbnail.
  constexpr std::size_t kText = kCapacity - 8 - (2 + 12 + 4);
  for (const std::size_t left : {0U, 1U, 2U, 77U, 93U, 94U}) {
    ExpectRefused(Write(TextOf(kText - left), {7}));
  }
  ExpectFull(Write(TextOf(kText - 95), {7}), BLOCK_IFD0, 270,
             {270, 2, 1024, Hex(Bytes(1024, 'x')) + "00"});
}

// Of a million records with one tag the last is written; that of another group stays.
TEST(HostileWriter, MillionRecordsOfOneTag) {
  std::vector<CInfoRecord> records(1'000'000);
  std::vector<std::uint8_t> values(records.size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    values[i] = static_cast<std::uint8_t>(i);
    records[i].m_nGroup = i % 2 == 0 ? kIfd0 : 77;
    records[i].m_nId = 271;
    records[i].m_nSize = 1;
    records[i].m_pData = &values[i];
  }
  const LumidexObject object;
  const TempFile source(Jpeg().Scan().Build());
  const NewPath output;
  const std::size_t size = records.size() * sizeof(CInfoRecord);
  EXPECT_EQ(Bounded(Bound{InputOf(size).milliseconds, kSmallInput.bytes},
                    [&] {
                      RemoveFile(output.Path());
                      return object->WriteMetadata(source.Path(), output.Path(), 1'000'000,
                                                   records.data(), 0, 0, nullptr, 0);
                    }),
            S_OK);
  StoreFile store(output.Read());
  EXPECT_EQ(store.ParseJpeg(), S_OK);
  EXPECT_EQ(Find(store.Store(), BLOCK_IFD0, 271), (Stored{271, 2, 1, "3e00"}));  // of 999,998
  for (CInfoRecord& record : records) record.m_pData = nullptr;
}

// Sizes that hold no whole value of their tag's type are dropped; so is everything here.
TEST(HostileWriter, RecordsTooSmallForOneValue) {
  Records records;
  for (std::size_t size = 1; size < 4; ++size) {
    records.Binary(kIfd0, 296, Bytes(size, 1)).Binary(kExif, 34866, Bytes(size, 1));
  }
  for (std::size_t size = 1; size < 8; ++size) {
    records.Binary(kIfd0, 282, Bytes(size, 1)).Binary(kGps, 2, Bytes(size, 1));
  }
  records.WithoutData(kIfd0, 271, 0xFFFFFFFF).WithoutData(kExif, 36864, 1);
  const Written written = Write(records);
  EXPECT_EQ(written.result, S_OK);
  EXPECT_EQ(written.file, Jpeg().Scan().Build());
}

}  // namespace
}  // namespace test
