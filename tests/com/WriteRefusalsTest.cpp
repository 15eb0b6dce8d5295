// What the writing methods refuse before they open a file for writing, in which order, and what
// they leave behind.

#include <cctype>
#include <filesystem>
#include <functional>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "com/WriteTestSupport.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

// Two images, a packet and a path without a file. After each test the files are what they were.
class WriteRefusals : public testing::Test {
 protected:
  WriteRefusals() {
    m_records.Ascii(2, 271, "Cam");
    std::filesystem::create_directory(std::filesystem::path(m_folder.Path()));
  }
  ~WriteRefusals() override {
    EXPECT_EQ(m_jpeg.Read(), m_jpegBytes);
    EXPECT_EQ(m_png.Read(), m_pngBytes);
    EXPECT_EQ(m_text.Read(), Text("not an image"));
    EXPECT_EQ(m_packet.Read(), Text(kShortPacket));
    EXPECT_FALSE(m_missing.Exists());
  }

  HRESULT Write(const WCHAR* source, const WCHAR* output, const WCHAR* packet = nullptr,
                bool overwrite = false) const {
    return m_object->WriteMetadata(source, output, m_records.Count(), m_records.Data(), 0, 0,
                                   packet, overwrite ? 1 : 0);
  }
  HRESULT Overwrite(const WCHAR* source, const WCHAR* output, const WCHAR* packet = nullptr) const {
    return Write(source, output, packet, true);
  }

  const LumidexObject m_object;
  const Bytes m_jpegBytes = Jpeg().Scan().Build();
  const Bytes m_pngBytes = Png().Header().End().Build();
  const TempFile m_jpeg{m_jpegBytes};
  const TempFile m_png{m_pngBytes, ".png"};
  const TempFile m_text{Text("not an image")};
  const TempFile m_packet{Text(kShortPacket), ".xmp"};
  const NewPath m_output;
  const NewPath m_folder;
  const NewPath m_missing;
  Records m_records;
};

// The other ways to name a file: with a dot in the path, and by a second link to it.
class OtherNames {
 public:
  explicit OtherNames(const WCHAR* path) {
    const std::filesystem::path whole(path);
    const auto dotted = (whole.parent_path() / "." / whole.filename()).u16string();
    m_dotted.assign(dotted.begin(), dotted.end());
    std::filesystem::create_hard_link(whole, std::filesystem::path(m_link.Path()));
  }

  const WCHAR* Dotted() const { return m_dotted.c_str(); }
  const WCHAR* Link() const { return m_link.Path(); }

 private:
  WideString m_dotted;
  NewPath m_link;
};

TEST_F(WriteRefusals, WriteNeedsASource) {
  EXPECT_EQ(Write(nullptr, m_output.Path()), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(Write(m_missing.Path(), m_output.Path()), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(Write(m_folder.Path(), m_output.Path()), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(Write(LMD_W(""), m_output.Path()), LMD_E_SRC_NOT_FOUND);
  EXPECT_FALSE(m_output.Exists());
}

TEST_F(WriteRefusals, WriteTakesNothingButAJpeg) {
  EXPECT_EQ(Write(m_png.Path(), m_output.Path()), LMD_E_BAD_FORMAT);
  EXPECT_EQ(Write(m_text.Path(), m_output.Path()), LMD_E_BAD_FORMAT);
  EXPECT_FALSE(m_output.Exists());
}

TEST_F(WriteRefusals, WriteReplacesNothingUnasked) {
  EXPECT_EQ(Write(m_jpeg.Path(), m_png.Path()), LMD_E_DST_EXISTS);
  EXPECT_EQ(Write(m_jpeg.Path(), m_folder.Path()), LMD_E_DST_EXISTS);
  EXPECT_EQ(Write(m_jpeg.Path(), nullptr), LMD_E_DST_EXISTS);
}

TEST_F(WriteRefusals, OverwriteNeedsAnOutputThatOpens) {
  EXPECT_EQ(Overwrite(m_jpeg.Path(), nullptr), LMD_E_OPEN_FAILED);
  EXPECT_EQ(Overwrite(m_jpeg.Path(), m_folder.Path()), LMD_E_OPEN_FAILED);
}

TEST_F(WriteRefusals, WriteNeedsRecordsOrAPacket) {
  const WCHAR* const source = m_jpeg.Path();
  const WCHAR* const output = m_output.Path();
  EXPECT_EQ(m_object->WriteMetadata(source, output, 0, m_records.Data(), 0, 0, nullptr, 0),
            LMD_E_INVALID_ARG);
  EXPECT_EQ(m_object->WriteMetadata(source, output, 0, m_records.Data(), 0, 0, m_packet.Path(), 0),
            LMD_E_INVALID_ARG);
  EXPECT_EQ(m_object->WriteMetadata(source, output, 1, nullptr, 0, 0, nullptr, 0),
            LMD_E_INVALID_ARG);
  EXPECT_FALSE(m_output.Exists());
}

TEST_F(WriteRefusals, WriteNeedsThePacketFile) {
  EXPECT_EQ(Write(m_jpeg.Path(), m_output.Path(), m_missing.Path()), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(Write(m_jpeg.Path(), m_output.Path(), m_folder.Path()), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(Write(m_jpeg.Path(), m_output.Path(), LMD_W("")), LMD_E_SRC_NOT_FOUND);
  EXPECT_FALSE(m_output.Exists());
}

// Each call breaks two rules; the one that is decided first answers.
TEST_F(WriteRefusals, WriteDecidesInOrder) {
  EXPECT_EQ(Write(m_missing.Path(), m_png.Path()), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(Write(m_text.Path(), m_png.Path()), LMD_E_BAD_FORMAT);
  EXPECT_EQ(m_object->WriteMetadata(m_jpeg.Path(), m_png.Path(), 0, nullptr, 0, 0, nullptr, 0),
            LMD_E_DST_EXISTS);
  EXPECT_EQ(m_object->WriteMetadata(m_jpeg.Path(), m_jpeg.Path(), 0, nullptr, 0, 0, nullptr, 1),
            LMD_E_DST_EXISTS);
  EXPECT_EQ(m_object->WriteMetadata(m_jpeg.Path(), m_output.Path(), 0, m_records.Data(), 0, 0,
                                    m_missing.Path(), 0),
            LMD_E_INVALID_ARG);
  EXPECT_FALSE(m_output.Exists());
}

TEST_F(WriteRefusals, SourceIsNeverOverwritten) {
  const OtherNames names(m_jpeg.Path());
  EXPECT_EQ(Overwrite(m_jpeg.Path(), m_jpeg.Path()), LMD_E_DST_EXISTS);
  EXPECT_EQ(Overwrite(m_jpeg.Path(), names.Dotted()), LMD_E_DST_EXISTS);
  EXPECT_EQ(Overwrite(m_jpeg.Path(), names.Link()), LMD_E_DST_EXISTS);
  EXPECT_EQ(Overwrite(names.Link(), m_jpeg.Path()), LMD_E_DST_EXISTS);
}

TEST_F(WriteRefusals, PacketFileIsNeverOverwritten) {
  const OtherNames names(m_packet.Path());
  EXPECT_EQ(Overwrite(m_jpeg.Path(), m_packet.Path(), m_packet.Path()), LMD_E_DST_EXISTS);
  EXPECT_EQ(Overwrite(m_jpeg.Path(), names.Dotted(), m_packet.Path()), LMD_E_DST_EXISTS);
  EXPECT_EQ(Overwrite(m_jpeg.Path(), names.Link(), m_packet.Path()), LMD_E_DST_EXISTS);
}

// Where capital letters name the same file, that is one more name of the source; elsewhere it is
// another file.
TEST_F(WriteRefusals, CapitalLettersAreJudgedAsTheSystemDoes) {
  WideString capitals = m_jpeg.Path();
  const std::size_t name = capitals.size() - 3;
  for (std::size_t i = name; i < capitals.size(); ++i) {
    capitals[i] = static_cast<WCHAR>(std::toupper(static_cast<int>(capitals[i])));
  }
  const bool isSource = GetFileAttributesW(capitals.c_str()) != INVALID_FILE_ATTRIBUTES;
  EXPECT_EQ(Overwrite(m_jpeg.Path(), capitals.c_str()), isSource ? LMD_E_DST_EXISTS : S_OK);
  if (!isSource) RemoveFile(capitals);
}

TEST_F(WriteRefusals, EmbeddingNeedsItsFiles) {
  EXPECT_EQ(m_object->EmbedXmpFile(m_missing.Path(), m_output.Path(), m_packet.Path()),
            LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(m_object->EmbedXmpFile(m_folder.Path(), m_output.Path(), m_packet.Path()),
            LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(m_object->EmbedXmpFile(m_jpeg.Path(), m_output.Path(), m_missing.Path()),
            LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(m_object->EmbedXmpFile(m_jpeg.Path(), m_output.Path(), m_folder.Path()),
            LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(m_object->EmbedXmpFile(nullptr, m_output.Path(), m_packet.Path()), LMD_E_BAD_FORMAT);
  EXPECT_EQ(m_object->EmbedXmpFile(m_text.Path(), m_output.Path(), m_packet.Path()),
            LMD_E_BAD_FORMAT);
  EXPECT_EQ(m_object->EmbedXmpFile(m_jpeg.Path(), m_output.Path(), nullptr), LMD_E_OPEN_FAILED);
  EXPECT_EQ(m_object->EmbedXmpFile(m_png.Path(), m_output.Path(), nullptr), LMD_E_OPEN_FAILED);
  EXPECT_EQ(m_object->EmbedXmpFile(m_png.Path(), m_png.Path(), nullptr), LMD_E_OPEN_FAILED);
  EXPECT_FALSE(m_output.Exists());
}

TEST_F(WriteRefusals, EmbeddingReplacesNothing) {
  for (const WCHAR* source : {m_jpeg.Path(), m_png.Path()}) {
    for (const WCHAR* output :
         {m_text.Path(), m_folder.Path(), static_cast<const WCHAR*>(nullptr)}) {
      EXPECT_EQ(m_object->EmbedXmpFile(source, output, m_packet.Path()), LMD_E_DST_EXISTS);
    }
  }
  EXPECT_EQ(m_object->EmbedXmpFile(m_jpeg.Path(), m_jpeg.Path(), m_packet.Path()),
            LMD_E_DST_EXISTS);
}

TEST_F(WriteRefusals, EmbeddingDecidesInOrder) {
  EXPECT_EQ(m_object->EmbedXmpFile(m_text.Path(), m_text.Path(), m_missing.Path()),
            LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(m_object->EmbedXmpFile(m_text.Path(), m_text.Path(), m_packet.Path()),
            LMD_E_BAD_FORMAT);
  EXPECT_EQ(m_object->EmbedXmpFile(m_jpeg.Path(), m_text.Path(), nullptr), LMD_E_DST_EXISTS);
}

TEST_F(WriteRefusals, PngUnderAnotherNameIsNotWrittenInPlace) {
  const OtherNames names(m_png.Path());
  EXPECT_EQ(m_object->EmbedXmpFile(m_png.Path(), names.Dotted(), m_packet.Path()),
            LMD_E_DST_EXISTS);
  EXPECT_EQ(m_object->EmbedXmpFile(m_png.Path(), names.Link(), m_packet.Path()), LMD_E_DST_EXISTS);
}

TEST_F(WriteRefusals, PngIsNotItsOwnPacketFile) {
  const OtherNames names(m_png.Path());
  EXPECT_EQ(m_object->EmbedXmpFile(m_png.Path(), m_png.Path(), m_png.Path()), LMD_E_DST_EXISTS);
  EXPECT_EQ(m_object->EmbedXmpFile(m_png.Path(), m_png.Path(), names.Link()), LMD_E_DST_EXISTS);
}

TEST_F(WriteRefusals, RefusalLeavesTheNewTypeWithTheOldPathAndResult) {
  const TempFile opened(Jpeg().Xmp("<x/>").Scan().Build());
  std::uint32_t size = 0;
  const std::vector<std::function<void()>> refusals = {
      [&] { EXPECT_EQ(Write(m_jpeg.Path(), m_text.Path()), LMD_E_DST_EXISTS); },
      [&] {
        EXPECT_EQ(m_object->EmbedXmpFile(m_jpeg.Path(), nullptr, nullptr), LMD_E_DST_EXISTS);
      }};
  for (const auto& refuse : refusals) {
    EXPECT_EQ(m_object->Open(opened.Path()), S_OK);
    refuse();
    EXPECT_EQ(m_object->GetXmpPacketSize(&size), S_OK);
    EXPECT_EQ(size, 35U);
  }
  // The file is now taken for a PNG, so that its values are not asked for.
  EXPECT_EQ(m_object->Open(opened.Path()), S_OK);
  EXPECT_EQ(m_object->EmbedXmpFile(m_png.Path(), nullptr, nullptr), LMD_E_DST_EXISTS);
  EXPECT_EQ(m_object->GetXmpPacketSize(&size), LMD_E_BAD_FORMAT);
  EXPECT_EQ(m_object->GetInfo16(&size), LMD_E_NOT_FOUND);
  // A missing source does not even change the type.
  EXPECT_EQ(m_object->Open(opened.Path()), S_OK);
  EXPECT_EQ(Write(m_missing.Path(), m_output.Path()), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(m_object->GetXmpPacketSize(&size), S_OK);
}

TEST_F(WriteRefusals, FailureBehindTheChecksKeepsTheNewPaths) {
  const TempFile opened(Jpeg().Scan().Build());
  const TempFile withPacket(Jpeg().Xmp("<x/>").Scan().Build());
  std::uint32_t size = 0;
  EXPECT_EQ(m_object->Open(opened.Path()), S_OK);
  EXPECT_EQ(m_object->EmbedXmpFile(withPacket.Path(), m_output.Path(), m_packet.Path()),
            LMD_E_XMP_FOUND);
  EXPECT_EQ(m_object->GetXmpPacketSize(&size), S_OK);
  EXPECT_EQ(size, 35U);
  EXPECT_FALSE(m_output.Exists());
}

}  // namespace
}  // namespace test
