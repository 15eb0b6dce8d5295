// The segment as it reaches a file, and the limit of its size.

#include <array>
#include <limits>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "support/Records.h"
#include "support/TempFile.h"
#include "writer/VxMetadataWriter.h"

namespace test {
namespace {

// IFD0 with one text of a size: a block of 26 bytes more.
Records TextOfSize(std::size_t size) {
  Records records;
  records.Binary(2, 270, Bytes(size, 'x'));
  return records;
}

struct Written {
  HRESULT result;
  Bytes bytes;
};

Written Write(const Records& records, const Bytes& thumbnail = {}) {
  const TempFile file({});
  BlockWriter output;
  EXPECT_TRUE(output.Open(file.Path(), LMD_W("w+b")));
  VxMetadataWriter writer(0);
  writer.SetOutput(&output);
  writer.SetThumbnail(thumbnail.data(), static_cast<std::uint32_t>(thumbnail.size()));
  EXPECT_EQ(writer.SetRecords(records.Data(), records.Count()), S_OK);
  const HRESULT result = writer.WriteExifSegment();
  EXPECT_TRUE(output.Close());
  return {result, file.Read()};
}

TEST(WriteExifSegment, WritesMarkerLengthSignatureAndBlock) {
  Records records;
  records.Ascii(2, 271, "Cam");
  const Written written = Write(records);
  EXPECT_EQ(written.result, S_OK);
  EXPECT_EQ(Hex(written.bytes),
            "ffe10022"
            "457869660000"
            "49492a0008000000"
            "0100"
            "0f0102000400000043616d00"
            "00000000");
}

TEST(WriteExifSegment, WritesNothingWithoutADirectory) {
  const Written written = Write(Records(), {0xFF, 0xD8});
  EXPECT_EQ(written.result, S_OK);
  EXPECT_TRUE(written.bytes.empty());
}

TEST(WriteExifSegment, NeedsAnOutput) {
  const Records records = TextOfSize(1);
  VxMetadataWriter writer(0);
  writer.SetRecords(records.Data(), records.Count());
  EXPECT_EQ(writer.WriteExifSegment(), E_POINTER);
}

TEST(WriteExifSegment, ReportsAFailedWrite) {
  const Records records = TextOfSize(1);
  const TempFile file({});
  BlockWriter output;
  ASSERT_TRUE(output.Open(file.Path(), LMD_W("rb")));
  ASSERT_TRUE(output.Write(Zeros(BlockWriter::kBlockSize - 1)));
  VxMetadataWriter writer(0);
  writer.SetOutput(&output);
  writer.SetRecords(records.Data(), records.Count());
  EXPECT_EQ(writer.WriteExifSegment(), LMD_E_WRITE_FAILED);
}

TEST(WriteExifSegment, FullBlockIsWritten) {
  const Written written = Write(TextOfSize(63974));
  EXPECT_EQ(written.result, S_OK);
  ASSERT_EQ(written.bytes.size(), 64010U);
  // The length is 64,008.
  EXPECT_EQ(Hex(std::span(written.bytes).first(10)), "ffe1fa08457869660000");
  EXPECT_EQ(written.bytes.back(), 'x');
}

TEST(WriteExifSegment, OneByteMoreIsRefusedWhole) {
  const Written written = Write(TextOfSize(63975));
  EXPECT_EQ(written.result, LMD_E_BUFFER_TOO_SMALL);
  EXPECT_TRUE(written.bytes.empty());
}

// Two bytes of text make a block of 26, the directory of the thumbnail and its values 94 more.
TEST(WriteExifSegment, ThumbnailFillsTheBlockExactly) {
  const Written written = Write(TextOfSize(2), Bytes(63880, 't'));
  EXPECT_EQ(written.result, S_OK);
  EXPECT_EQ(written.bytes.size(), 64010U);
}

TEST(WriteExifSegment, ThumbnailOneByteTooLargeIsRefused) {
  const Written written = Write(TextOfSize(2), Bytes(63881, 't'));
  EXPECT_EQ(written.result, LMD_E_BUFFER_TOO_SMALL);
  EXPECT_TRUE(written.bytes.empty());
}

TEST(WriteExifSegment, EachDirectoryCountsForTheLimit) {
  for (const std::uint32_t group : {4U, 8U}) {
    // IFD0 with its pointer ends at 26, the second directory's value begins at 44.
    const std::uint32_t tag = group == 4 ? 37510 : 27;
    Records full;
    full.Binary(group, tag, Zeros(63956));
    EXPECT_EQ(Write(full).bytes.size(), 64010U);
    Records over;
    over.Binary(group, tag, Zeros(63957));
    EXPECT_EQ(Write(over).result, LMD_E_BUFFER_TOO_SMALL);
  }
}

// Values of 16 bits take half of their record.
TEST(WriteExifSegment, StoredSizeCountsForTheLimit) {
  Records full;
  full.Integers(4, 37396, std::vector<std::uint32_t>(31978));
  EXPECT_EQ(Write(full).bytes.size(), 64010U);
  Records over;
  over.Integers(4, 37396, std::vector<std::uint32_t>(31979));
  EXPECT_EQ(Write(over).result, LMD_E_BUFFER_TOO_SMALL);
}

// Sizes near 4 GiB, of which no byte may be read: several of them must not add up to a small one.
TEST(WriteExifSegment, HugeSizesAreRefusedUnread) {
  std::array<CInfoRecord, 2> records{};
  std::uint8_t byte = 0;
  std::uint32_t tag = 270;
  for (CInfoRecord& record : records) {
    record.m_nGroup = 2;
    record.m_nId = tag++;
    record.m_nSize = std::numeric_limits<std::uint32_t>::max() - 7;
    record.m_pData = &byte;
  }
  VxMetadataWriter writer(0);
  writer.SetRecords(records.data(), 2);
  EXPECT_EQ(writer.BuildBlock(), LMD_E_BUFFER_TOO_SMALL);

  const Records small = TextOfSize(1);
  VxMetadataWriter thumbnail(0);
  thumbnail.SetThumbnail(&byte, std::numeric_limits<std::uint32_t>::max());
  thumbnail.SetRecords(small.Data(), small.Count());
  EXPECT_EQ(thumbnail.BuildBlock(), LMD_E_BUFFER_TOO_SMALL);
}

}  // namespace
}  // namespace test
