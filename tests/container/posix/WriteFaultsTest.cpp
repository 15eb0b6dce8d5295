// Writing to a full disk, from a source that breaks off, and to a file whose errors show late.

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "base/FileStream.h"
#include "container/FileCopy.h"
#include "container/MetadataRewrite.h"
#include "container/XmpEmbedding.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/Records.h"
#include "support/TempFile.h"
#include "support/XmpPacket.h"
#include "support/posix/FaultyFile.h"

namespace test {
namespace {

constexpr const WCHAR* kFullDisk = u"/dev/full";

// A photograph, a picture and a packet.
class WriteFaults : public testing::Test {
 protected:
  WriteFaults() { m_records.Ascii(2, 271, "Cam"); }
  ~WriteFaults() override {
    EXPECT_EQ(m_jpeg.Read(), m_jpegBytes);
    EXPECT_EQ(m_png.Read(), m_pngBytes);
    EXPECT_EQ(m_packet.Read(), Text(kShortPacket));
    RemoveFile(m_output);
  }

  RewriteRequest Request() const {
    RewriteRequest request;
    request.output = m_output.c_str();
    request.records = m_records.Data();
    request.recordCount = m_records.Count();
    return request;
  }
  RewriteRequest PacketRequest() const {
    RewriteRequest request = Request();
    request.records = nullptr;
    request.packet = m_packet.Path();
    return request;
  }

  HRESULT Rewrite(RewriteRequest request) const {
    FileStream source;
    EXPECT_TRUE(OpenForCopy(source, m_jpeg.Path(), u"rb"));
    request.source = &source;
    return RewriteMetadata(request);
  }
  HRESULT EmbedJpeg(const WCHAR* output) const {
    FileStream source;
    EXPECT_TRUE(OpenForCopy(source, m_jpeg.Path(), u"rb"));
    return EmbedIntoJpeg(source, output, m_packet.Path());
  }
  HRESULT EmbedPng(const WCHAR* output) const {
    FileStream source;
    EXPECT_TRUE(OpenForCopy(source, m_png.Path(), u"rb"));
    return EmbedIntoPng(source, output, m_packet.Path());
  }

  const Bytes m_jpegBytes = Jpeg().Segment(0xE0, Zeros(14)).Scan().Raw(Bytes(200000, 7)).Build();
  const Bytes m_pngBytes = Png().Header().End().Build();
  const TempFile m_jpeg{m_jpegBytes};
  const TempFile m_png{m_pngBytes, ".png"};
  const TempFile m_packet{Text(kShortPacket), ".xmp"};
  const WideString m_output = TempPath();
  Records m_records;
};

TEST_F(WriteFaults, FullDisk) {
  RewriteRequest request = Request();
  request.output = kFullDisk;
  EXPECT_EQ(Rewrite(request), LMD_E_WRITE_FAILED);
  request = PacketRequest();
  request.output = kFullDisk;
  EXPECT_EQ(Rewrite(request), LMD_E_WRITE_FAILED);
  EXPECT_EQ(EmbedJpeg(kFullDisk), LMD_E_WRITE_FAILED);
  EXPECT_EQ(EmbedPng(kFullDisk), LMD_E_WRITE_FAILED);
}

// Wherever a write is cut short the result tells of it, and what was written stays.
TEST_F(WriteFaults, DiskThatFillsUp) {
  const std::size_t whole = m_jpegBytes.size() + 36 + 45;  // with both segments
  for (const std::size_t room : {0U, 1U, 2U, 11U, 12U, 30U, 38U, 50U, 100U, 150000U}) {
    RewriteRequest request = Request();
    request.packet = m_packet.Path();
    const FaultyFile disk(m_output, {.writable = room});
    EXPECT_EQ(Rewrite(request), LMD_E_WRITE_FAILED) << room;
    EXPECT_EQ(ReadFile(m_output).size(), room);
  }
  RewriteRequest request = Request();
  request.packet = m_packet.Path();
  const FaultyFile disk(m_output, {.writable = whole});
  EXPECT_EQ(Rewrite(request), S_OK);
  EXPECT_EQ(ReadFile(m_output).size(), whole);
}

TEST_F(WriteFaults, DiskThatFillsUpDuringAnEmbedding) {
  for (const std::size_t room : {0U, 1U, 2U, 3U, 40U, 100U, 150000U}) {
    const FaultyFile disk(m_output, {.writable = room});
    EXPECT_EQ(EmbedJpeg(m_output.c_str()), LMD_E_WRITE_FAILED);
    EXPECT_EQ(ReadFile(m_output).size(), room);
  }
}

TEST_F(WriteFaults, ErrorThatShowsOnClosing) {
  {
    const FaultyFile disk(m_output, {.closes = false});
    EXPECT_EQ(Rewrite(Request()), LMD_E_WRITE_FAILED);
  }
  const FaultyFile disk(m_output, {.closes = false});
  EXPECT_EQ(EmbedJpeg(m_output.c_str()), LMD_E_WRITE_FAILED);
}

TEST_F(WriteFaults, SourceThatBreaksOff) {
  for (const std::size_t readable : {65536U, 65537U, 150000U}) {
    const FaultyFile source(m_jpeg.Path(), {.readable = readable});
    EXPECT_EQ(Rewrite(Request()), LMD_E_READ_FAILED) << readable;
    EXPECT_EQ(Rewrite(PacketRequest()), LMD_E_READ_FAILED) << readable;
    EXPECT_EQ(EmbedJpeg(m_output.c_str()), LMD_E_READ_FAILED) << readable;
  }
}

// What can be read of it is the packet: it ends there as far as anyone can tell.
TEST_F(WriteFaults, PacketFileThatBreaksOff) {
  const Bytes whole = m_packet.Read();
  const FaultyFile packet(m_packet.Path(), {.readable = 5});
  EXPECT_EQ(EmbedJpeg(m_output.c_str()), S_OK);
  const Bytes output = ReadFile(m_output);
  EXPECT_EQ(output.size(), m_jpegBytes.size() + 33 + 5);
  EXPECT_EQ(Bytes(output.begin() + 2 + 33, output.begin() + 2 + 38),
            Bytes(whole.begin(), whole.begin() + 5));
}

TEST_F(WriteFaults, OutputInAFolderThatTakesNoFiles) {
  RewriteRequest request = Request();
  request.output = u"/proc/lumidex.jpg";
  EXPECT_EQ(Rewrite(request), LMD_E_OPEN_FAILED);
  EXPECT_EQ(EmbedJpeg(u"/proc/lumidex.jpg"), LMD_E_OPEN_FAILED);
  EXPECT_EQ(EmbedPng(u"/proc/lumidex.png"), LMD_E_OPEN_FAILED);
}

// The file as a whole is compared when the test ends.
TEST_F(WriteFaults, PictureThatCannotGrowIsPutBack) {
  const std::size_t chunk = 34 + 12;
  for (std::size_t more = 0; more < chunk; ++more) {
    const FileSizeLimit limit(m_pngBytes.size() + more);
    EXPECT_EQ(EmbedIntoSamePng(m_png.Path(), m_packet.Path()), LMD_E_WRITE_FAILED) << more;
    EXPECT_EQ(m_png.Read(), m_pngBytes) << more;
  }
}

TEST_F(WriteFaults, PictureWhoseClosingFailsIsPutBack) {
  const FaultyFile disk(m_png.Path(), {.closes = false});
  EXPECT_EQ(EmbedIntoSamePng(m_png.Path(), m_packet.Path()), LMD_E_WRITE_FAILED);
}

}  // namespace
}  // namespace test
