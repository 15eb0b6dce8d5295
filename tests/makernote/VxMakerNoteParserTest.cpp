#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "makernote/NoteFile.h"
#include "makernote/VxMakerNoteParser.h"
#include "support/LogCapture.h"
#include "support/Tiff.h"

namespace {

using test::Bytes;
using test::g_big;
using test::kLittle;
using test::LogCapture;
using test::NoteFile;
using test::Tiff;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kNoParser[] = "[VxMakerNoteParser] Err! m_pParser is invalid! ";

// A note with lens id 5, and a value of six bytes behind the directory.
Bytes LensNote(std::uint32_t offset = 0) {
  return g_big.BuildDirectory({g_big.Short(1, {1, 2, 3}), g_big.Short(0xA003, {5})}, offset);
}

std::size_t CountEntries(CVxMakerNoteParser& frontEnd) {
  std::size_t count = 0;
  for (bool more = frontEnd.FirstEntry(); more; more = frontEnd.NextEntry()) {
    if (frontEnd.CurrentEntry() != nullptr) ++count;
  }
  return count;
}

TEST(VxMakerNoteParser, ServesAMakeThatHoldsTheVendorsName) {
  for (const char* make :
       {"SAMSUNG", "SAMSUNG TECHWIN", "THE SAMSUNG", "xSAMSUNGx", "SAMSAMSUNG"}) {
    CVxMakerNoteParser frontEnd(0);
    EXPECT_TRUE(frontEnd.SetCameraInfo(make, "NX10")) << make;
  }
}

TEST(VxMakerNoteParser, ServesNoOtherMake) {
  for (const char* make : {"", "SAMSUN", "Samsung", "samsung", "SAMSUNg", "SAM SUNG", "Maker"}) {
    CVxMakerNoteParser frontEnd(0);
    EXPECT_FALSE(frontEnd.SetCameraInfo(make, "NX10")) << make;
    const LogCapture log;
    NoteFile file(LensNote());
    EXPECT_EQ(frontEnd.ParseMakerNote(file.Stream(), 0, kLittle, 0, 0), nullptr);
    EXPECT_THAT(log.Lines(), ElementsAre(kNoParser));
  }
}

TEST(VxMakerNoteParser, LogsAMissingParserInBothForms) {
  CVxMakerNoteParser frontEnd(0);
  const LogCapture log;
  NoteFile file(LensNote());
  EXPECT_EQ(frontEnd.ParseMakerNote(file.Stream(), 0, kLittle, 0, 0), nullptr);
  EXPECT_EQ(frontEnd.ParseMakerNote(file.Path(), 0, 0, kLittle), nullptr);
  EXPECT_EQ(frontEnd.ParseMakerNote(nullptr, 0, 0, kLittle), nullptr);
  EXPECT_THAT(log.Lines(), ElementsAre(kNoParser, kNoParser, kNoParser));
}

TEST(VxMakerNoteParser, HasNothingToWalkWithoutAParser) {
  CVxMakerNoteParser frontEnd(0);
  EXPECT_FALSE(frontEnd.FirstEntry());
  EXPECT_FALSE(frontEnd.NextEntry());
  EXPECT_EQ(frontEnd.CurrentEntry(), nullptr);
}

TEST(VxMakerNoteParser, ParsesAnOpenFileAtItsPosition) {
  CVxMakerNoteParser frontEnd(0);
  ASSERT_TRUE(frontEnd.SetCameraInfo("SAMSUNG", "NX10"));
  frontEnd.SetExtraInfo("1.0", 50);
  const LogCapture log;
  NoteFile file(test::Join({test::Zeros(30), LensNote()}), 30);
  auto info = frontEnd.ParseMakerNote(file.Stream(), 4, kLittle, 30, 200);
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(info->nVendorCode, 10U);
  EXPECT_EQ(info->nLensId, 5U);
  EXPECT_STREQ(info->pszLensName.get(), "Samsung NX 20mm F2.8 Pancake");
  EXPECT_EQ(CountEntries(frontEnd), 2U);
  frontEnd.FreeMakerNoteInfo(std::move(info));
  frontEnd.FreeMakerNoteInfo(nullptr);
  EXPECT_EQ(CountEntries(frontEnd), 2U) << "the entries outlive the summary";
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(VxMakerNoteParser, ParsesAFileByItsPath) {
  CVxMakerNoteParser frontEnd(0);
  ASSERT_TRUE(frontEnd.SetCameraInfo("SAMSUNG", "NX10"));
  const LogCapture log;
  // Without bounds the offsets count from the file's start.
  NoteFile file(test::Join({test::Zeros(30), LensNote(30)}));
  const auto info = frontEnd.ParseMakerNote(file.Path(), 30, 4, kLittle);
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(info->nLensId, 5U);
  ASSERT_TRUE(frontEnd.FirstEntry());
  ASSERT_NE(frontEnd.CurrentEntry(), nullptr);
  EXPECT_EQ(test::Hex(TagBytes(*frontEnd.CurrentEntry())), "010002000300");
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(VxMakerNoteParser, LogsAnEmptyPathAndAFileThatCannotBeOpened) {
  CVxMakerNoteParser frontEnd(0);
  ASSERT_TRUE(frontEnd.SetCameraInfo("SAMSUNG", "NX10"));
  const LogCapture log;
  EXPECT_EQ(frontEnd.ParseMakerNote(LMD_W(""), 0, 0, kLittle), nullptr);
  EXPECT_EQ(frontEnd.ParseMakerNote(nullptr, 0, 0, kLittle), nullptr);
  EXPECT_EQ(frontEnd.ParseMakerNote(test::TempPath().c_str(), 0, 0, kLittle), nullptr);
  EXPECT_THAT(log.Lines(), ElementsAre("[ParseMakerNote] err! Invalid file path!",
                                       "[ParseMakerNote] err! Invalid file path!",
                                       "[ParseMakerNote] err! Fail to open file"));
}

TEST(VxMakerNoteParser, GivesNothingForAnUnreadableNoteWithoutAMessage) {
  CVxMakerNoteParser frontEnd(0);
  ASSERT_TRUE(frontEnd.SetCameraInfo("SAMSUNG", "NX10"));
  const LogCapture log;
  NoteFile file(test::Zeros(100));
  EXPECT_EQ(frontEnd.ParseMakerNote(file.Stream(), 0, kLittle, 0, 0), nullptr);
  EXPECT_EQ(frontEnd.ParseMakerNote(file.Path(), 0, 0, kLittle), nullptr);
  EXPECT_EQ(frontEnd.ParseMakerNote(file.Path(), 5000, 0, kLittle), nullptr);
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(VxMakerNoteParser, ForgetsTheEntriesWithTheNextChoice) {
  CVxMakerNoteParser frontEnd(0);
  ASSERT_TRUE(frontEnd.SetCameraInfo("SAMSUNG", "NX10"));
  NoteFile file(LensNote());
  ASSERT_NE(frontEnd.ParseMakerNote(file.Stream(), 0, kLittle, 0, 0), nullptr);
  EXPECT_EQ(CountEntries(frontEnd), 2U);
  ASSERT_TRUE(frontEnd.SetCameraInfo("SAMSUNG", "NX11"));
  EXPECT_EQ(CountEntries(frontEnd), 0U);
  EXPECT_FALSE(frontEnd.SetCameraInfo("Maker", "Model"));
  EXPECT_FALSE(frontEnd.FirstEntry());
}

TEST(VxMakerNoteParser, KeepsEarlierEntriesThatALaterParseDoesNotReplace) {
  CVxMakerNoteParser frontEnd(0);
  ASSERT_TRUE(frontEnd.SetCameraInfo("SAMSUNG", "NX10"));
  NoteFile first(g_big.BuildDirectory({g_big.Short(1, {1}), g_big.Short(2, {2})}, 0));
  NoteFile second(g_big.BuildDirectory({g_big.Short(2, {7}), g_big.Short(3, {3})}, 0));
  ASSERT_NE(frontEnd.ParseMakerNote(first.Stream(), 0, kLittle, 0, 0), nullptr);
  ASSERT_NE(frontEnd.ParseMakerNote(second.Stream(), 0, kLittle, 0, 0), nullptr);
  EXPECT_EQ(CountEntries(frontEnd), 3U);
}

}  // namespace
