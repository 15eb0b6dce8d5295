// The writing methods where only the stand-ins can show it: symbolic links, devices, a source that
// vanishes between two steps.

#include <filesystem>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "com/WriteTestSupport.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/XmpPacket.h"
#include "support/posix/FaultyFile.h"

namespace test {
namespace {

Records MakeRecord() {
  Records records;
  records.Ascii(2, 271, "Cam");
  return records;
}

void Link(const WCHAR* target, const NewPath& link) {
  std::filesystem::create_symlink(std::filesystem::path(target),
                                  std::filesystem::path(link.Path()));
}

TEST(WriteMethodsPosix, SymbolicLinkToTheSourceIsTheSource) {
  const LumidexObject object;
  const Bytes contents = Jpeg().Scan().Build();
  const TempFile source(contents);
  const TempFile packet(Text(kShortPacket), ".xmp");
  const NewPath link;
  Link(source.Path(), link);
  EXPECT_EQ(object.Write(source.Path(), link.Path(), MakeRecord(), true), LMD_E_DST_EXISTS);
  EXPECT_EQ(object.Write(link.Path(), source.Path(), MakeRecord(), true), LMD_E_DST_EXISTS);
  EXPECT_EQ(object->EmbedXmpFile(source.Path(), link.Path(), packet.Path()), LMD_E_DST_EXISTS);
  EXPECT_EQ(source.Read(), contents);
}

TEST(WriteMethodsPosix, SymbolicLinkToAPngIsAnotherName) {
  const LumidexObject object;
  const TempFile image(Png().Header().End().Build(), ".png");
  const TempFile packet(Text(kShortPacket), ".xmp");
  const NewPath link;
  Link(image.Path(), link);
  EXPECT_EQ(object->EmbedXmpFile(image.Path(), link.Path(), packet.Path()), LMD_E_DST_EXISTS);
  EXPECT_EQ(image.Read(), Png().Header().End().Build());
}

TEST(WriteMethodsPosix, FullDisk) {
  const LumidexObject object;
  const Bytes contents = Jpeg().Scan().Build();
  const TempFile source(contents);
  const TempFile packet(Text(kShortPacket), ".xmp");
  EXPECT_EQ(object.Write(source.Path(), u"/dev/full", MakeRecord(), true), LMD_E_WRITE_FAILED);
  EXPECT_EQ(object->WriteMetadata(source.Path(), u"/dev/full", 0, nullptr, 0, 0, packet.Path(), 1),
            LMD_E_WRITE_FAILED);
  EXPECT_EQ(object->EmbedXmpFile(source.Path(), u"/dev/full", packet.Path()), LMD_E_DST_EXISTS);
  EXPECT_EQ(source.Read(), contents);
}

TEST(WriteMethodsPosix, FilesThatCannotGrow) {
  const LumidexObject object;
  const Bytes contents = Jpeg().Scan().Raw(Bytes(5000, 7)).Build();
  const TempFile source(contents);
  const TempFile image(Png().Header().End().Build(), ".png");
  const TempFile packet(Text(kShortPacket), ".xmp");
  const NewPath first;
  const NewPath second;
  const FileSizeLimit limit(image.Read().size() + 8);
  EXPECT_EQ(object.Write(source.Path(), first.Path(), MakeRecord()), LMD_E_WRITE_FAILED);
  EXPECT_EQ(object->EmbedXmpFile(source.Path(), second.Path(), packet.Path()), LMD_E_WRITE_FAILED);
  EXPECT_EQ(object->EmbedXmpFile(image.Path(), image.Path(), packet.Path()), LMD_E_WRITE_FAILED);
  EXPECT_EQ(source.Read(), contents);
  EXPECT_EQ(image.Read(), Png().Header().End().Build());
}

TEST(WriteMethodsPosix, TrailerThatCannotBeWrittenLeavesNothing) {
  const LumidexObject object;
  const Bytes contents = Jpeg().Scan().Raw(Bytes(100, 7)).Build();
  const TempFile file(contents);
  for (const std::size_t more : {0U, 1U, 63U}) {
    const FileSizeLimit limit(contents.size() + more);
    EXPECT_EQ(object->AppendTrailer(file.Path()), LMD_E_WRITE_FAILED);
    EXPECT_EQ(file.Read(), contents);
  }
  {
    const FaultyFile disk(file.Path(), {.closes = false});
    EXPECT_EQ(object->AppendTrailer(file.Path()), LMD_E_WRITE_FAILED);
    EXPECT_EQ(file.Read(), contents);
  }
  EXPECT_EQ(object->AppendTrailer(file.Path()), S_OK);
}

TEST(WriteMethodsPosix, FolderThatTakesNoFiles) {
  const LumidexObject object;
  const TempFile source(Jpeg().Scan().Build());
  const TempFile packet(Text(kShortPacket), ".xmp");
  EXPECT_EQ(object.Write(source.Path(), u"/proc/lumidex.jpg", MakeRecord()), LMD_E_OPEN_FAILED);
  EXPECT_EQ(object->EmbedXmpFile(source.Path(), u"/proc/lumidex.jpg", packet.Path()),
            LMD_E_OPEN_FAILED);
}

TEST(WriteMethodsPosix, SourceIsOpenedOnce) {
  const LumidexObject object;
  const TempFile source(Jpeg().Scan().Build());
  const TempFile packet(Text(kShortPacket), ".xmp");
  for (const std::size_t openings : {0U, 1U}) {
    const HRESULT expected = openings == 0 ? LMD_E_BAD_FORMAT : S_OK;
    const NewPath first;
    const NewPath second;
    {
      const FaultyFile vanishing(source.Path(), {.openings = openings});
      EXPECT_EQ(object.Write(source.Path(), first.Path(), MakeRecord()), expected);
    }
    const FaultyFile vanishing(source.Path(), {.openings = openings});
    EXPECT_EQ(object->EmbedXmpFile(source.Path(), second.Path(), packet.Path()), expected);
    EXPECT_EQ(first.Exists(), openings != 0);
    EXPECT_EQ(second.Exists(), openings != 0);
  }
}

// It is opened anew to be written.
TEST(WriteMethodsPosix, PngThatVanishesIsNotWrittenInPlace) {
  const LumidexObject object;
  const TempFile image(Png().Header().End().Build(), ".png");
  const TempFile packet(Text(kShortPacket), ".xmp");
  const FaultyFile vanishing(image.Path(), {.openings = 1});
  EXPECT_EQ(object->EmbedXmpFile(image.Path(), image.Path(), packet.Path()), LMD_E_OPEN_FAILED);
  EXPECT_EQ(image.Read(), Png().Header().End().Build());
}

}  // namespace
}  // namespace test
