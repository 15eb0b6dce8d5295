#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/LogCapture.h"
#include "support/Records.h"
#include "writer/VxMetadataWriter.h"

namespace test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;

// The block that is built from records and a thumbnail, as hex text.
std::string BlockHexOf(const Records& records, const Bytes& thumbnail = {}) {
  VxMetadataWriter writer(0);
  writer.SetThumbnail(thumbnail.data(), static_cast<std::uint32_t>(thumbnail.size()));
  EXPECT_EQ(writer.SetRecords(records.Data(), records.Count()), S_OK);
  EXPECT_EQ(writer.BuildBlock(), S_OK);
  return Hex(writer.Block());
}

// Hex text without the spaces that make it readable.
std::string Tight(std::string text) {
  std::erase(text, ' ');
  return text;
}

// IFD0 alone, holding the Make "Cam": the smallest block.
std::string MakeBlock() {
  return Tight(
      "49492a00 08000000 "
      "0100 "
      "0f010200 04000000 43616d00 "
      "00000000");
}

Records MakeRecord() {
  Records records;
  records.Ascii(2, 271, "Cam");
  return records;
}

TEST(VxMetadataWriter, ShortTextStandsInPlace) {
  EXPECT_EQ(BlockHexOf(MakeRecord()), MakeBlock());
}

TEST(VxMetadataWriter, LongerTextStandsBehindTheDirectory) {
  Records records;
  records.Ascii(2, 271, "Camera");
  EXPECT_EQ(BlockHexOf(records), Tight("49492a00 08000000 "
                                       "0100 "
                                       "0f010200 07000000 1a000000 "
                                       "00000000 "
                                       "43616d65726100"));
}

TEST(VxMetadataWriter, ExifRecordsAloneStillProduceIfd0) {
  Records records;
  records.Integers(4, 34855, {400});
  EXPECT_EQ(BlockHexOf(records), Tight("49492a00 08000000 "
                                       "0100 "  // IFD0 at 8
                                       "69870400 01000000 1a000000 "
                                       "00000000 "
                                       "0100 "  // EXIF at 26
                                       "27880300 01000000 90010000 "
                                       "00000000"));
}

TEST(VxMetadataWriter, ThreeDirectoriesFollowEachOther) {
  Records records;
  records.Integers(8, 30, {1}).Ascii(8, 1, "N");
  records.Rationals(4, 33437, {{28, 10}}).Ascii(2, 305, "abcde");
  EXPECT_EQ(BlockHexOf(records), Tight("49492a00 08000000 "
                                       "0300 "                        // IFD0 at 8
                                       "31010200 06000000 32000000 "  // Software at 50
                                       "69870400 01000000 38000000 "  // EXIF at 56
                                       "25880400 01000000 52000000 "  // GPS at 82
                                       "00000000 "
                                       "616263646500 "
                                       "0100 "                        // EXIF at 56
                                       "9d820500 01000000 4a000000 "  // FNumber at 74
                                       "00000000 "
                                       "1c000000 0a000000 "
                                       "0200 "  // GPS at 82
                                       "01000200 02000000 4e000000 "
                                       "1e000800 01000000 01000000 "  // GPSDifferential has type 8
                                       "00000000"));
}

TEST(VxMetadataWriter, ValuesFollowEachOtherWithoutPadding) {
  Records records;
  records.Ascii(2, 270, "1234").Ascii(2, 271, "56789a").Rationals(2, 282, {{72, 1}});
  EXPECT_EQ(BlockHexOf(records), Tight("49492a00 08000000 "
                                       "0300 "
                                       "0e010200 05000000 32000000 "  // 50
                                       "0f010200 07000000 37000000 "  // 55
                                       "1a010500 01000000 3e000000 "  // 62
                                       "00000000 "
                                       "3132333400 "
                                       "35363738396100 "
                                       "48000000 01000000"));
}

TEST(VxMetadataWriter, OneAndTwoShortsStandInPlaceAndThreeDoNot) {
  Records records;
  records.Integers(4, 37396, {0xFFFF0001}).Integers(4, 40961, {2, 3}).Integers(4, 41492, {4, 5, 6});
  EXPECT_EQ(BlockHexOf(records), Tight("49492a00 08000000 "
                                       "0100 "
                                       "69870400 01000000 1a000000 "
                                       "00000000 "
                                       "0300 "
                                       "14920300 01000000 01000000 "
                                       "01a00300 02000000 02000300 "
                                       "14a20300 03000000 44000000 "  // 26 + 42
                                       "00000000 "
                                       "040005000600"));
}

TEST(VxMetadataWriter, OneLongStandsInPlaceAndTwoDoNot) {
  Records records;
  records.Integers(4, 40962, {0x01020304}).Integers(4, 40963, {5, 6});
  EXPECT_EQ(BlockHexOf(records), Tight("49492a00 08000000 "
                                       "0100 "
                                       "69870400 01000000 1a000000 "
                                       "00000000 "
                                       "0200 "
                                       "02a00400 01000000 04030201 "
                                       "03a00400 02000000 38000000 "  // 26 + 30
                                       "00000000 "
                                       "05000000 06000000"));
}

TEST(VxMetadataWriter, FourBytesStandInPlaceAndFiveDoNot) {
  Records records;
  records.Binary(4, 36864, Text("0232")).Binary(4, 37510, Text("abcde")).Binary(4, 41728, {3});
  EXPECT_EQ(BlockHexOf(records), Tight("49492a00 08000000 "
                                       "0100 "
                                       "69870400 01000000 1a000000 "
                                       "00000000 "
                                       "0300 "
                                       "00900700 04000000 30323332 "
                                       "86920700 05000000 44000000 "
                                       "00a30700 01000000 03000000 "
                                       "00000000 "
                                       "6162636465"));
}

TEST(VxMetadataWriter, ThumbnailHasADirectoryOfItsOwn) {
  EXPECT_EQ(BlockHexOf(MakeRecord(), {0xFF, 0xD8, 0xFF, 0xD9}),
            Tight("49492a00 08000000 "
                  "0100 "
                  "0f010200 04000000 43616d00 "
                  "1a000000 "  // the next directory is at 26
                  "0600 "
                  "03010300 01000000 06000000 "
                  "1a010500 01000000 68000000 "  // 104
                  "1b010500 01000000 70000000 "  // 112
                  "28010300 01000000 02000000 "
                  "01020400 01000000 78000000 "  // 120
                  "02020400 01000000 04000000 "
                  "00000000 "
                  "48000000 01000000 "
                  "48000000 01000000 "
                  "ffd8ffd9"));
}

TEST(VxMetadataWriter, ThumbnailDirectoryComesLast) {
  Records records;
  records.Ascii(8, 1, "N");
  EXPECT_EQ(BlockHexOf(records, {0xAB}), Tight("49492a00 08000000 "
                                               "0100 "
                                               "25880400 01000000 1a000000 "
                                               "2c000000 "  // 44
                                               "0100 "
                                               "01000200 02000000 4e000000 "
                                               "00000000 "
                                               "0600 "
                                               "03010300 01000000 06000000 "
                                               "1a010500 01000000 7a000000 "  // 122
                                               "1b010500 01000000 82000000 "  // 130
                                               "28010300 01000000 02000000 "
                                               "01020400 01000000 8a000000 "  // 138
                                               "02020400 01000000 01000000 "
                                               "00000000 "
                                               "48000000 01000000 "
                                               "48000000 01000000 "
                                               "ab"));
}

TEST(VxMetadataWriter, ThumbnailNeedsBothAddressAndLength) {
  const Bytes jpeg = {0xFF, 0xD8, 0xFF, 0xD9};
  const Records records = MakeRecord();
  VxMetadataWriter writer(0);
  writer.SetRecords(records.Data(), records.Count());
  writer.SetThumbnail(nullptr, 4);
  EXPECT_EQ(writer.BuildBlock(), S_OK);
  EXPECT_EQ(Hex(writer.Block()), MakeBlock());
  writer.SetThumbnail(jpeg.data(), 0);
  EXPECT_EQ(writer.BuildBlock(), S_OK);
  EXPECT_EQ(Hex(writer.Block()), MakeBlock());
}

TEST(VxMetadataWriter, ThumbnailAloneWritesNothing) {
  EXPECT_EQ(BlockHexOf(Records(), {0xFF, 0xD8, 0xFF, 0xD9}), "");
}

TEST(VxMetadataWriter, LaterRecordReplacesTheEarlierOne) {
  Records records;
  records.Ascii(2, 271, "A long name").Ascii(2, 272, "").Ascii(2, 271, "Cam");
  EXPECT_EQ(BlockHexOf(records), Tight("49492a00 08000000 "
                                       "0200 "
                                       "0f010200 04000000 43616d00 "
                                       "10010200 01000000 00000000 "
                                       "00000000"));
}

TEST(VxMetadataWriter, SameNumberInOtherGroupsIsAnotherTag) {
  Records records = MakeRecord();
  records.Ascii(4, 271, "no").Ascii(8, 271, "no").Ascii(1, 271, "no").Ascii(512, 271, "no");
  EXPECT_EQ(BlockHexOf(records), MakeBlock());
}

TEST(VxMetadataWriter, DroppedRecordDoesNotReplace) {
  Records records = MakeRecord();
  records.WithoutData(2, 271, 4).Binary(2, 271, {});
  EXPECT_EQ(BlockHexOf(records), MakeBlock());
}

TEST(VxMetadataWriter, UnlistedTagsAreDropped) {
  Records records = MakeRecord();
  records.Ascii(4, 42035, "LensMake").Ascii(8, 31, "31").Integers(2, 274, {1});
  records.Integers(2, 0x1010F, {1}).Ascii(32, 306, "x").Ascii(0, 271, "x");
  EXPECT_EQ(BlockHexOf(records), MakeBlock());
}

TEST(VxMetadataWriter, RecordsSmallerThanOneValueAreDropped) {
  Records records = MakeRecord();
  records.Binary(2, 296, {1, 0, 0}).Binary(2, 282, Zeros(7)).Binary(4, 40962, {1, 0, 0});
  records.Binary(4, 37377, Zeros(7)).Binary(8, 30, {1, 0}).Binary(8, 2, Zeros(4));
  EXPECT_EQ(BlockHexOf(records), MakeBlock());
}

TEST(VxMetadataWriter, NothingLeftWritesNothing) {
  Records records;
  records.Ascii(4, 42035, "LensMake").Binary(4, 40962, {1, 0, 0}).WithoutData(2, 271, 4);
  EXPECT_EQ(BlockHexOf(records), "");
  EXPECT_EQ(BlockHexOf(Records()), "");
}

TEST(VxMetadataWriter, PointerOfTheHostIsZeroWithoutADirectory) {
  Records records;
  records.Integers(2, 34665, {1234}).Binary(2, 34853, {9});
  EXPECT_EQ(BlockHexOf(records), Tight("49492a00 08000000 "
                                       "0200 "
                                       "69870400 01000000 00000000 "
                                       "25880400 01000000 00000000 "
                                       "00000000"));
}

TEST(VxMetadataWriter, PointerOfTheHostGivesWayToADirectory) {
  Records records;
  records.Integers(2, 34665, {1234, 5678}).Integers(4, 34855, {400});
  EXPECT_EQ(BlockHexOf(records), Tight("49492a00 08000000 "
                                       "0100 "
                                       "69870400 01000000 1a000000 "
                                       "00000000 "
                                       "0100 "
                                       "27880300 01000000 90010000 "
                                       "00000000"));
}

TEST(VxMetadataWriter, TypeOfTheRecordDoesNotMatter) {
  Records records;
  records.Raw(2, 271, LMD_RECORD_DOUBLE, {'C', 'a', 'm', 0});
  EXPECT_EQ(BlockHexOf(records), MakeBlock());
}

TEST(VxMetadataWriter, BuildingNeverLogs) {
  const LogCapture log;
  Records records;
  records.Integers(4, 34855, {400}).Ascii(8, 1, "N");
  BlockHexOf(records, {1});
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(VxMetadataWriter, OptionIsKept) {
  EXPECT_EQ(VxMetadataWriter(7).Option(), 7U);
}

TEST(VxMetadataWriter, IptcRecordsAreKeptByTheirDataset) {
  Records records;
  for (std::uint32_t id = 0; id <= 50; ++id) records.Ascii(16, id, "text");
  VxMetadataWriter writer(0);
  writer.SetRecords(records.Data(), records.Count());
  EXPECT_THAT(
      writer.IptcRecords(),
      ElementsAre(Key(0), Key(5), Key(15), Key(20), Key(25), Key(40), Key(55), Key(60), Key(62),
                  Key(63), Key(80), Key(85), Key(90), Key(92), Key(95), Key(100), Key(101),
                  Key(103), Key(105), Key(110), Key(115), Key(116), Key(120), Key(122)));
  for (const auto& [id, dataset] : {std::pair{15U, 0U}, {16U, 90U}, {22U, 25U}, {41U, 63U}}) {
    EXPECT_EQ(writer.IptcRecords().at(dataset)->m_nId, id);
  }
  EXPECT_EQ(writer.BuildBlock(), S_OK);
  EXPECT_TRUE(writer.Block().empty());
}

TEST(VxMetadataWriter, ExtendedRecordsAreKeptAndMarkTheirGroups) {
  Records records;
  records.Ascii(64, 0xAA01, "5").Ascii(64, 0xAA04, "x").Ascii(64, 0xAB02, "x");
  records.Ascii(64, 0xAA0A, "x").Ascii(64, 0xAB05, "x").WithoutData(64, 0xAA05, 4);
  VxMetadataWriter writer(0);
  writer.SetRecords(records.Data(), records.Count());
  EXPECT_THAT(writer.ExtendedRecords(), ElementsAre(Key(0xAA01), Key(0xAA04), Key(0xAB02)));
  EXPECT_THAT(writer.ExtendedGroups(), ElementsAre(3, 6, 7));
  EXPECT_TRUE(writer.SeparateRecords().empty());
  EXPECT_EQ(writer.BuildBlock(), S_OK);
  EXPECT_TRUE(writer.Block().empty());
}

TEST(VxMetadataWriter, SeparateIdentifierMarksThreeGroups) {
  Records records;
  records.Ascii(64, 0xAB09, "x");
  VxMetadataWriter writer(0);
  writer.SetRecords(records.Data(), records.Count());
  EXPECT_TRUE(writer.ExtendedRecords().empty());
  EXPECT_THAT(writer.SeparateRecords(), ElementsAre(Key(0xAB09)));
  EXPECT_THAT(writer.ExtendedGroups(), ElementsAre(9, 10, 11));
}

}  // namespace
}  // namespace test
