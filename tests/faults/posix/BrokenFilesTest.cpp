// Seeks and reads that the system fails, as opposed to the end of a file.

#include <algorithm>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "base/FileStream.h"
#include "com/WriteTestSupport.h"
#include "container/FileCopy.h"
#include "container/MetadataRewrite.h"
#include "container/XmpEmbedding.h"
#include "container/XmpPacket.h"
#include "container/XmpPacketReader.h"
#include "core/VxMetadataWrapper.h"
#include "faults/Fault.h"
#include "faults/Inputs.h"
#include "faults/posix/FailingFiles.h"

namespace test {
namespace {

class BrokenFiles : public testing::Test {
 protected:
  bool Open(FileStream& stream) { return stream.Open(m_file.Path(), LMD_W("rb"), 16); }

  const TempFile m_file{Bytes(100, 7)};
  FailingFiles m_files;
};

TEST_F(BrokenFiles, EndOfAFileIsNoFailure) {
  FileStream stream;
  ASSERT_TRUE(Open(stream));
  stream.Seek(99);
  static_cast<void>(stream.ReadU32(ByteOrder::BigEndian));
  stream.Seek(1000);
  static_cast<void>(stream.ReadU8());
  EXPECT_TRUE(stream.WasShort());
  EXPECT_FALSE(stream.HasFailed());
}

TEST_F(BrokenFiles, FailedReadAndSeekAreRememberedUntilTheNextFile) {
  for (const Call kind : {Call::Read, Call::Seek}) {
    FileStream stream;
    ASSERT_TRUE(Open(stream));
    stream.Seek(50);
    {
      const Fault fault(kind, 1, false);
      EXPECT_EQ(stream.ReadU8(), 0);
    }
    EXPECT_TRUE(stream.WasShort());
    EXPECT_TRUE(stream.HasFailed());
    EXPECT_EQ(stream.ReadU8(), 7);
    EXPECT_TRUE(stream.HasFailed());
    ASSERT_TRUE(Open(stream));
    EXPECT_FALSE(stream.HasFailed());
  }
}

TEST_F(BrokenFiles, SizeThatCannotBeToldIsAFailure) {
  FileStream stream;
  ASSERT_TRUE(Open(stream));
  {
    const Fault fault(Call::Seek, 1, false);
    EXPECT_EQ(stream.Size(), 0U);
  }
  EXPECT_TRUE(stream.HasFailed());
  EXPECT_EQ(stream.Size(), 100U);
}

TEST_F(BrokenFiles, CopyOfAnUnknownSizeFails) {
  FileStream stream;
  BlockWriter output;
  const NewPath path;
  ASSERT_TRUE(Open(stream));
  ASSERT_TRUE(output.Open(path.Path(), LMD_W("wb")));
  const Fault fault(Call::Seek, 1, false);
  EXPECT_EQ(CopyRest(stream, 0, output), LMD_E_READ_FAILED);
}

TEST_F(BrokenFiles, PacketFileThatCannotBeReadIsAFailedRead) {
  PacketBytes bytes;
  for (const auto read : {&ReadAsXmpSegment, &ReadAsXmpChunk}) {
    FileStream stream;
    ASSERT_TRUE(Open(stream));
    const Fault fault(Call::Read, 1, false);
    EXPECT_EQ(read(stream, &bytes), LMD_E_READ_FAILED);
    EXPECT_TRUE(bytes.empty());
  }
}

// A search that breaks off must not put a packet where it happened to be.
TEST_F(BrokenFiles, NothingIsWrittenFromASourceThatCannotBeSearched) {
  const TempFile jpeg(PhotoWithLargePacket());
  const TempFile png(PngWithLargePacket(), ".png");
  const NewPath output;
  RewriteRequest request;
  request.output = output.Path();
  request.packet = m_file.Path();
  for (const bool isLasting : {false, true}) {
    const auto second = [&](const TempFile& file, auto write) {
      const Fault fault(Call::Read, 2, isLasting);
      FileStream source;
      EXPECT_TRUE(OpenForCopy(source, file.Path(), LMD_W("rb")));
      return write(source);
    };
    const auto rewrite = [&](FileStream& source) {
      request.source = &source;
      return RewriteMetadata(request);
    };
    const auto embedJpeg = [&](FileStream& source) {
      return EmbedIntoJpeg(source, output.Path(), m_file.Path());
    };
    const auto embedPng = [&](FileStream& source) {
      return EmbedIntoPng(source, output.Path(), m_file.Path());
    };
    EXPECT_EQ(second(jpeg, rewrite), LMD_E_READ_FAILED);
    EXPECT_EQ(second(jpeg, embedJpeg), LMD_E_READ_FAILED);
    EXPECT_EQ(second(png, embedPng), LMD_E_READ_FAILED);
    EXPECT_FALSE(output.Exists());
  }
}

// The last of the reads is that of the packet; those before find it.
TEST_F(BrokenFiles, PacketThatCannotBeReadLeavesTheBuffer) {
  const TempFile jpeg(PhotoWithLargePacket());
  const Bytes before(0xFFFF, 0x77);
  Bytes buffer = before;
  std::uint32_t size = 99;
  const auto room = static_cast<std::uint32_t>(buffer.size());
  HRESULT last = S_OK;
  for (int number = 1;; ++number) {
    const Fault fault(Call::Read, number, false);
    const HRESULT result = ReadXmpPacket(jpeg.Path(), FILETYPE_JPEG, &size, buffer.data(), room);
    if (!fault.WasMet()) break;
    last = result;
    EXPECT_EQ(size, 99U);
    EXPECT_EQ(buffer, before);
  }
  EXPECT_EQ(last, LMD_E_READ_FAILED);
}

// The contents of a file after a write into it that failed and could not be undone.
class BrokenPutBack : public testing::Test {
 protected:
  HRESULT Embed() { return m_object->EmbedXmpFile(m_png.Path(), m_png.Path(), m_packet.Path()); }

  // Nothing of the old contents is lost; at most something is left behind them.
  static void ExpectToBeginAs(const Bytes& before, const Bytes& after) {
    ASSERT_GE(after.size(), before.size());
    EXPECT_TRUE(std::equal(before.begin(), before.end(), after.begin()));
  }

  LumidexObject m_object;
  const TempFile m_png{PlainPng(), ".png"};
  const TempFile m_packet{PacketFile(), ".xmp"};
  FailingFiles m_files;
};

TEST_F(BrokenPutBack, FileThatCannotBeCutKeepsItsContents) {
  for (const Call kind : {Call::Write, Call::Flush, Call::Close}) {
    SCOPED_TRACE(NameOf(kind));
    WriteFile(m_png.Path(), PlainPng());
    // The type, the packet file, the file itself.
    const Fault fault(kind, kind == Call::Close ? 3 : 1, false);
    const Fault truncation(Call::Truncate, 1, true);
    EXPECT_EQ(Embed(), LMD_E_WRITE_FAILED);
    EXPECT_TRUE(truncation.WasMet());
    ExpectToBeginAs(PlainPng(), m_png.Read());
  }
}

TEST_F(BrokenPutBack, TrailerThatCannotBeCutOffIsTold) {
  for (const Call kind : {Call::Write, Call::Flush, Call::Close}) {
    SCOPED_TRACE(NameOf(kind));
    WriteFile(m_png.Path(), PlainPng());
    const Fault fault(kind, 1, false);
    const Fault truncation(Call::Truncate, 1, true);
    EXPECT_EQ(m_object->AppendTrailer(m_png.Path()), LMD_E_WRITE_FAILED);
    EXPECT_TRUE(truncation.WasMet());
    ExpectToBeginAs(PlainPng(), m_png.Read());
  }
}

// The file was written whole, but what the system says of it is a failure.
TEST_F(BrokenPutBack, FileThatCannotBeOpenedAgainIsTold) {
  const Fault closing(Call::Close, 3, false);
  const Fault opening(Call::Open, 4, true);
  EXPECT_EQ(Embed(), LMD_E_WRITE_FAILED);
  EXPECT_TRUE(opening.WasMet());
  EXPECT_GT(m_png.Read().size(), PlainPng().size());
}

}  // namespace
}  // namespace test
