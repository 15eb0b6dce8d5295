#include <optional>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "container/FileCopy.h"
#include "container/MetadataRewrite.h"
#include "container/XmpPacket.h"
#include "support/Jpeg.h"
#include "support/Records.h"
#include "support/TempFile.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

// SOI and the EXIF segment of one record, the Make "Cam".
Bytes NewExif() {
  return Join({{0xFF, 0xD8, 0xFF, 0xE1, 0x00, 0x22},
               Text("Exif"),
               Zeros(2),
               {'I', 'I', 42, 0, 8, 0, 0, 0, 1, 0, 0x0F, 0x01, 2, 0, 4, 0, 0, 0},
               Text("Cam"),
               Zeros(5)});
}

Records MakeRecord() {
  Records records;
  records.Ascii(2, 271, "Cam");
  return records;
}

// A rewrite of a source, run once; the output is removed with it.
class Rewriting {
 public:
  explicit Rewriting(const Bytes& source) : m_source(source), m_before(source) {
    m_request.output = m_output.c_str();
  }
  ~Rewriting() { RemoveFile(m_output); }
  Rewriting(const Rewriting&) = delete;
  Rewriting& operator=(const Rewriting&) = delete;

  Rewriting& With(const Records& records) {
    m_request.records = records.Data();
    m_request.recordCount = records.Count();
    return *this;
  }
  Rewriting& WithPacket(const Bytes& packet) {
    m_packet.emplace(packet, ".xmp");
    m_request.packet = m_packet->Path();
    return *this;
  }
  Rewriting& Overwriting() {
    m_request.overwrite = true;
    return *this;
  }

  RewriteRequest& Request() { return m_request; }
  HRESULT Run() {
    FileStream source;
    EXPECT_TRUE(OpenForCopy(source, m_source.Path(), LMD_W("rb")));
    m_request.source = &source;
    const HRESULT result = RewriteMetadata(m_request);
    EXPECT_EQ(m_source.Read(), m_before);
    return result;
  }
  bool HasOutput() const { return GetFileAttributesW(m_output.c_str()) != INVALID_FILE_ATTRIBUTES; }
  Bytes Output() const { return ReadFile(m_output); }
  const WideString& OutputPath() const { return m_output; }

 private:
  TempFile m_source;
  Bytes m_before;
  std::optional<TempFile> m_packet;
  WideString m_output = TempPath();
  RewriteRequest m_request;
};

TEST(MetadataRewrite, NewSegmentFollowsSoi) {
  const Records records = MakeRecord();
  const Bytes rest = {0xFF, 0xE0, 0, 3, 1, 0xFF, 0xDA, 0, 2, 1, 2, 3, 0xFF, 0xD9};
  Rewriting rewriting(Join({{0xFF, 0xD8}, rest}));
  EXPECT_EQ(rewriting.With(records).Run(), S_OK);
  EXPECT_EQ(rewriting.Output(), Join({NewExif(), rest}));
}

TEST(MetadataRewrite, OldExifNeedsLeaveToOverwrite) {
  const Records records = MakeRecord();
  Rewriting rewriting(Jpeg().Exif(Zeros(8)).Scan().Build());
  EXPECT_EQ(rewriting.With(records).Run(), LMD_E_HAS_EXIF);
  EXPECT_FALSE(rewriting.HasOutput());
}

TEST(MetadataRewrite, OldExifStaysAndWhatStoodBeforeItDoesNot) {
  const Records records = MakeRecord();
  const Bytes old = Jpeg().Exif(Zeros(8)).Segment(0xE2, {1}).Exif(Zeros(9)).Scan().Build();
  const Bytes kept(old.begin() + 2, old.end());
  const Bytes before = {0xFF, 0xD8, 0xFF, 0xE0, 0, 3, 1, 0xFF, 0xFE, 0, 2};
  Rewriting rewriting(Join({before, kept}));
  EXPECT_EQ(rewriting.With(records).Overwriting().Run(), S_OK);
  EXPECT_EQ(rewriting.Output(), Join({NewExif(), kept}));
}

TEST(MetadataRewrite, PacketFollowsTheNewSegment) {
  const Records records = MakeRecord();
  const Bytes kept = {0xFF, 0xE1, 0, 6, 'E', 'x', 'i', 'f', 0xFF, 0xD9};
  Rewriting rewriting(Join({{0xFF, 0xD8, 0xFF, 0xE0, 0, 2}, kept}));
  EXPECT_EQ(rewriting.With(records).WithPacket(Text(kShortPacket)).Overwriting().Run(), S_OK);
  EXPECT_EQ(rewriting.Output(), Join({NewExif(), MakeXmpSegment(Text(kShortPacket)), kept}));
}

TEST(MetadataRewrite, PacketAloneFollowsTheOldExif) {
  const Bytes before = {0xFF, 0xD8, 0xFF, 0xE0, 0, 2, 0xFF, 0xE1, 0, 6, 'E', 'x', 'i', 'f'};
  const Bytes after = {0xFF, 0xE2, 0, 2, 0xFF, 0xDA, 0, 2, 1, 2, 0xFF, 0xD9};
  Rewriting rewriting(Join({before, after}));
  EXPECT_EQ(rewriting.WithPacket(Text(kShortPacket)).Run(), S_OK);
  EXPECT_EQ(rewriting.Output(), Join({before, MakeXmpSegment(Text(kShortPacket)), after}));
}

TEST(MetadataRewrite, RecordsThatAreAllDroppedWriteNoSegment) {
  Records records;
  records.Ascii(4, 42035, "LensMake").Ascii(16, 22, "keyword").Ascii(64, 0xAA01, "5");
  const Bytes rest = {0xFF, 0xE0, 0, 3, 1, 0xFF, 0xD9};
  Rewriting rewriting(Join({{0xFF, 0xD8}, rest}));
  EXPECT_EQ(rewriting.With(records).Run(), S_OK);
  EXPECT_EQ(rewriting.Output(), Join({{0xFF, 0xD8}, rest}));
}

TEST(MetadataRewrite, ThumbnailIsWritten) {
  const Records records = MakeRecord();
  const Bytes thumbnail = {0xFF, 0xD8, 0xFF, 0xD9};
  Rewriting rewriting(Jpeg().Scan().Build());
  rewriting.With(records).Request().thumbnail = thumbnail.data();
  rewriting.Request().thumbnailLength = 4;
  EXPECT_EQ(rewriting.Run(), S_OK);
  const Bytes output = rewriting.Output();
  // SOI, the segment's head, a block of 26 bytes, then the thumbnail's directory of 94.
  EXPECT_EQ(LoadU16(std::span(output).subspan(4), ByteOrder::BigEndian), 8 + 26 + 94 + 4);
  EXPECT_EQ(Hex(std::span(output).subspan(12 + 26 + 94, 6)), "ffd8ffd9ffda");
}

TEST(MetadataRewrite, RecordsThatDoNotFitAreRefusedWithoutAnOutput) {
  Records records;
  records.Binary(2, 270, Bytes(63975, 'x'));
  Rewriting refused(Jpeg().Scan().Build());
  EXPECT_EQ(refused.With(records).Run(), LMD_E_BUFFER_TOO_SMALL);
  EXPECT_FALSE(refused.HasOutput());

  WriteFile(refused.OutputPath(), Text("an older file"));
  EXPECT_EQ(refused.Overwriting().Run(), LMD_E_BUFFER_TOO_SMALL);
  EXPECT_EQ(refused.Output(), Text("an older file"));
}

TEST(MetadataRewrite, FullBlockIsWritten) {
  Records records;
  records.Binary(2, 270, Bytes(63974, 'x'));
  Rewriting rewriting(Jpeg().Scan().Build());
  EXPECT_EQ(rewriting.With(records).Run(), S_OK);
  EXPECT_EQ(rewriting.Output().size(), 64010 + Jpeg().Scan().Build().size());
}

TEST(MetadataRewrite, PacketFileMustFitASegment) {
  const Records records = MakeRecord();
  Rewriting fits(Jpeg().Scan().Build());
  EXPECT_EQ(fits.With(records).WithPacket(Bytes(65504, 'x')).Run(), S_OK);
  EXPECT_EQ(fits.Output().size(), NewExif().size() + 65537 + Jpeg().Scan().Build().size() - 2);
  for (const std::size_t size : {65505U, 65506U}) {
    Rewriting refused(Jpeg().Scan().Build());
    EXPECT_EQ(refused.With(records).WithPacket(Bytes(size, 'x')).Run(), LMD_E_BUFFER_TOO_SMALL);
    EXPECT_FALSE(refused.HasOutput());
  }
}

TEST(MetadataRewrite, PresentPacketIsFound) {
  const Records records = MakeRecord();
  Rewriting rewriting(Jpeg().Xmp("<x/>").Scan().Build());
  EXPECT_EQ(rewriting.WithPacket(Text(kShortPacket)).Run(), LMD_E_XMP_FOUND);
  EXPECT_EQ(rewriting.With(records).Run(), LMD_E_XMP_FOUND);
  EXPECT_FALSE(rewriting.HasOutput());
}

TEST(MetadataRewrite, PresentPacketStaysWhenNoneIsGiven) {
  const Records records = MakeRecord();
  const Bytes source = Jpeg().Xmp("<x/>").Scan().Build();
  Rewriting rewriting(source);
  EXPECT_EQ(rewriting.With(records).Run(), S_OK);
  EXPECT_EQ(rewriting.Output(), Join({NewExif(), Bytes(source.begin() + 2, source.end())}));
}

TEST(MetadataRewrite, OldExifIsFoundBeforeThePacket) {
  const Records records = MakeRecord();
  Rewriting rewriting(Jpeg().Exif({}).Xmp("<x/>").Build());
  EXPECT_EQ(rewriting.With(records).WithPacket(Text(kShortPacket)).Run(), LMD_E_HAS_EXIF);
}

TEST(MetadataRewrite, PacketIsJudgedBeforeTheRecords) {
  Records records;
  records.Binary(2, 270, Bytes(63975, 'x'));
  Rewriting rewriting(Jpeg().Xmp("<x/>").Build());
  EXPECT_EQ(rewriting.With(records).WithPacket(Text(kShortPacket)).Run(), LMD_E_XMP_FOUND);
}

TEST(MetadataRewrite, SourceMustBeginWithSoi) {
  const Records records = MakeRecord();
  Rewriting rewriting(Text("no image"));
  EXPECT_EQ(rewriting.With(records).Run(), LMD_E_BAD_FORMAT);
  EXPECT_FALSE(rewriting.HasOutput());
  Rewriting packetAlone(Text("no image"));
  EXPECT_EQ(packetAlone.WithPacket(Text(kShortPacket)).Run(), LMD_E_BAD_FORMAT);
}

TEST(MetadataRewrite, SourceThatEndsInsideItsExifSegment) {
  const Bytes source = Join({{0xFF, 0xD8, 0xFF, 0xE1, 0, 100}, Text("Exif"), Zeros(20)});
  Rewriting packetAlone(source);
  EXPECT_EQ(packetAlone.WithPacket(Text(kShortPacket)).Run(), LMD_E_READ_FAILED);

  // With records the copy begins at the old segment and takes what is there.
  const Records records = MakeRecord();
  Rewriting overwriting(source);
  EXPECT_EQ(overwriting.With(records).Overwriting().Run(), S_OK);
  EXPECT_EQ(overwriting.Output(), Join({NewExif(), Bytes(source.begin() + 2, source.end())}));
}

TEST(MetadataRewrite, FilesMustOpen) {
  const Records records = MakeRecord();
  const WideString missing = TempPath();
  const WideString nowhere = missing + LMD_W("/x.jpg");
  Rewriting rewriting(Jpeg().Scan().Build());
  rewriting.With(records);

  rewriting.Request().packet = missing.c_str();
  EXPECT_EQ(rewriting.Run(), LMD_E_OPEN_FAILED);
  rewriting.Request().packet = nullptr;
  for (const WCHAR* output : {nowhere.c_str(), static_cast<const WCHAR*>(nullptr), LMD_W("")}) {
    rewriting.Request().output = output;
    EXPECT_EQ(rewriting.Run(), LMD_E_OPEN_FAILED);
  }
  EXPECT_FALSE(rewriting.HasOutput());
}

TEST(MetadataRewrite, OlderOutputIsReplacedWhole) {
  const Records records = MakeRecord();
  Rewriting rewriting({0xFF, 0xD8, 0xFF, 0xD9});
  WriteFile(rewriting.OutputPath(), Bytes(100000, 'x'));
  EXPECT_EQ(rewriting.With(records).Overwriting().Run(), S_OK);
  EXPECT_EQ(rewriting.Output(), Join({NewExif(), {0xFF, 0xD9}}));
}

}  // namespace
}  // namespace test
