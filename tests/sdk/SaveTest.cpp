// Saving through a file beside the photograph: what the new file holds, and what stays as it was.

#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "WrapperTest.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

using lumidex::Edit;
using lumidex::Record;

Bytes PlainJpeg() {
  return Jpeg().Frame(640, 480).Scan().Raw(Zeros(100)).Build();
}

Bytes PanoramaPacket() {
  return Text(XmpPacket("GPano:ProjectionType=\"equirectangular\""));
}

Edit ArtistEdit() {
  Edit edit;
  edit.records = {{LMD_GROUP_IFD0, 315, std::string("A. Photographer")},
                  {LMD_GROUP_EXIF, 33434, std::vector<lumidex::Rational>{{1, 250}}}};
  return edit;
}

std::vector<Record> RecordsOf(const PhotoFolder& folder, std::uint32_t group, std::uint32_t id) {
  std::vector<Record> found;
  for (const Record& record : LoadModule().Open(folder.Photo()).Records()) {
    if (record.group == group && record.id == id) found.push_back(record);
  }
  return found;
}

TEST(Save, RecordsAreReadBack) {
  const PhotoFolder folder(PlainJpeg());
  lumidex::Save(LoadModule(), folder.Photo(), ArtistEdit());
  const auto artist = RecordsOf(folder, LMD_GROUP_IFD0, 315);
  ASSERT_EQ(artist.size(), 1U);
  EXPECT_EQ(artist[0].value, lumidex::Value(std::string("A. Photographer")));
  const auto exposure = RecordsOf(folder, LMD_GROUP_EXIF, 33434);
  ASSERT_EQ(exposure.size(), 1U);
  EXPECT_EQ(exposure[0].value, lumidex::Value(std::vector<lumidex::Rational>{{1, 250}}));
  EXPECT_EQ(folder.FileCount(), 1);
}

TEST(Save, ImageStaysByteForByte) {
  const PhotoFolder folder(PlainJpeg());
  Edit edit = ArtistEdit();
  edit.thumbnail = PlainJpeg();
  lumidex::Save(LoadModule(), folder.Photo(), edit);
  const Bytes before = PlainJpeg();
  const Bytes after = folder.Read();
  ASSERT_GT(after.size(), before.size());
  EXPECT_EQ(Bytes(after.end() - static_cast<std::ptrdiff_t>(before.size() - 2), after.end()),
            Bytes(before.begin() + 2, before.end()));
}

TEST(Save, PacketGoesIntoAJpegAndAPng) {
  for (const bool isPng : {false, true}) {
    const PhotoFolder folder(isPng ? Png().Header().End().Build() : PlainJpeg(),
                             isPng ? "photo.png" : "photo.jpg");
    const auto xmp = folder.Write("packet.xmp", PanoramaPacket());
    lumidex::SaveXmp(LoadModule(), folder.Photo(), xmp);
    const lumidex::Photo photo = LoadModule().Open(folder.Photo());
    EXPECT_TRUE(photo.IsPanorama());
    const Bytes packet = PanoramaPacket();
    EXPECT_EQ(photo.XmpPacket(), std::string(packet.begin(), packet.end()));
    EXPECT_EQ(folder.FileCount(), 2);
  }
}

TEST(Save, RecordsAndPacketGoTogether) {
  const PhotoFolder folder(PlainJpeg());
  Edit edit = ArtistEdit();
  edit.xmpFile = folder.Write("packet.xmp", PanoramaPacket());
  lumidex::Save(LoadModule(), folder.Photo(), edit);
  EXPECT_EQ(RecordsOf(folder, LMD_GROUP_IFD0, 315).size(), 1U);
  EXPECT_TRUE(LoadModule().Open(folder.Photo()).IsPanorama());
}

TEST(Save, TrailerIsAppendedOnce) {
  const PhotoFolder folder(PlainJpeg());
  lumidex::SaveTrailer(LoadModule(), folder.Photo());
  EXPECT_EQ(folder.Read().size(), PlainJpeg().size() + 64);
  EXPECT_EQ(CodeOf([&] { lumidex::SaveTrailer(LoadModule(), folder.Photo()); }),
            LMD_E_ALREADY_MARKED);
  EXPECT_EQ(folder.FileCount(), 1);
}

TEST(Save, TimesAreKeptWhenAsked) {
  for (const bool keep : {false, true}) {
    const PhotoFolder folder(PlainJpeg());
    const auto old = std::filesystem::last_write_time(folder.Photo()) - std::chrono::hours(1000);
    std::filesystem::last_write_time(folder.Photo(), old);
    const auto before = std::filesystem::last_write_time(folder.Photo());
    lumidex::SaveOptions options;
    options.keepTimes = keep;
    lumidex::Save(LoadModule(), folder.Photo(), ArtistEdit(), options);
    EXPECT_EQ(std::filesystem::last_write_time(folder.Photo()) == before, keep);
  }
}

TEST(Save, RefusedChangeLeavesThePhotograph) {
  const PhotoFolder folder(PlainJpeg());
  const auto xmp = folder.Write("packet.xmp", PanoramaPacket());
  const auto module = LoadModule();
  Edit large;
  large.records = {{LMD_GROUP_IFD0, 315, std::string(65000, 'x')}};
  EXPECT_EQ(CodeOf([&] { lumidex::Save(module, folder.Photo(), large); }), LMD_E_BUFFER_TOO_SMALL);
  EXPECT_EQ(CodeOf([&] { lumidex::Save(module, folder.Photo(), Edit{}); }), LMD_E_INVALID_ARG);
  Edit unknown;
  unknown.records = {{LMD_GROUP_IFD0, 1, std::string("no tag that is written")}};
  EXPECT_EQ(CodeOf([&] { lumidex::Save(module, folder.Photo(), unknown); }), LMD_E_READ_FAILED);
  EXPECT_EQ(CodeOf([&] { lumidex::Save(module, folder.Photo() / "none", Edit{}); }),
            LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(CodeOf([&] { lumidex::SaveXmp(module, folder.Photo(), "wrapper-test-none.xmp"); }),
            LMD_E_OPEN_FAILED);
  EXPECT_EQ(folder.Read(), PlainJpeg());

  lumidex::SaveXmp(module, folder.Photo(), xmp);
  const Bytes before = folder.Read();
  EXPECT_EQ(CodeOf([&] { lumidex::SaveXmp(module, folder.Photo(), xmp); }), LMD_E_XMP_FOUND);
  EXPECT_EQ(folder.Read(), before);
  EXPECT_EQ(folder.FileCount(), 2);
}

// A file that does not read back as it must does not take the photograph's place.
TEST(Save, WrongNewFileIsThrownAway) {
  const PhotoFolder folder(PlainJpeg());
  const auto write = [&](ILumidex&, const WCHAR*, const WCHAR* target) {
    WriteFile(target, Jpeg().Frame(320, 200).Scan().Build());
    return S_OK;
  };
  const auto wrong = [](const Bytes&, const Bytes&) { return false; };
  const auto right = [](const Bytes&, const Bytes&) { return true; };
  const auto module = LoadModule();
  EXPECT_EQ(CodeOf([&] { lumidex::detail::ChangeFile(module, folder.Photo(), {}, write, wrong); }),
            LMD_E_READ_FAILED);
  EXPECT_EQ(CodeOf([&] { lumidex::detail::ChangeFile(module, folder.Photo(), {}, write, right); }),
            LMD_E_READ_FAILED);
  EXPECT_EQ(folder.Read(), PlainJpeg());
  EXPECT_EQ(folder.FileCount(), 1);
}

TEST(Save, InsertionIsToldFromOtherChanges) {
  const auto isInsertion = [](std::string_view before, std::string_view after,
                              std::string_view part, std::size_t overhead) {
    return lumidex::detail::IsInsertion(Text(before), Text(after), Text(part), overhead);
  };
  EXPECT_TRUE(isInsertion("abcd", "ab--XYcd", "XY", 2));
  EXPECT_TRUE(isInsertion("abcd", "abcXYd", "XY", 0));
  EXPECT_TRUE(isInsertion("aaaa", "aaaaaa", "aa", 0));
  EXPECT_FALSE(isInsertion("abcd", "ab--XYce", "XY", 2));
  EXPECT_FALSE(isInsertion("abcd", "ab-XYcd", "XY", 2));
  EXPECT_FALSE(isInsertion("abcd", "ab--XZcd", "XY", 2));
  EXPECT_FALSE(isInsertion("abcd", "ab", "XY", 2));
}

TEST(Save, ImageBeginsBehindTheMetadata) {
  const Bytes head = Jpeg().Exif(Zeros(20)).Xmp("x").Segment(0xFE, Text("note")).Build();
  const Bytes whole =
      Jpeg().Exif(Zeros(20)).Xmp("x").Segment(0xFE, Text("note")).Frame(8, 8).Scan().Build();
  EXPECT_EQ(lumidex::detail::ImageStart(whole), head.size() - 2);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_LE(lumidex::detail::ImageStart(cut), size);
  }
}

}  // namespace
}  // namespace test
