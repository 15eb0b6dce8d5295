// The C++ wrapper on the built module: loading, values, absent values, errors, packets, records.

#include "WrapperTest.h"

#include <array>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <lumidex/Lumidex.hpp>

#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/SamsungPhoto.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

using lumidex::Error;
using lumidex::FileType;
using lumidex::Module;
using lumidex::Photo;
using lumidex::Record;

const Record* Find(const std::vector<Record>& records, std::uint32_t group, std::uint32_t id) {
  for (const Record& record : records) {
    if (record.group == group && record.id == id) return &record;
  }
  return nullptr;
}

TEST(Wrapper, ErrorNamesItsCode) {
  const Error error("Open", LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(error.Code(), LMD_E_SRC_NOT_FOUND);
  EXPECT_STREQ(error.Name(), "LMD_E_SRC_NOT_FOUND");
  EXPECT_STREQ(error.what(),
               "Open: LMD_E_SRC_NOT_FOUND (0x8004C001): the file does not exist or is not a "
               "regular file");
  EXPECT_STREQ(lumidex::NameOf(E_POINTER), "E_POINTER");
  EXPECT_STREQ(lumidex::NameOf(static_cast<HRESULT>(0x80041234U)), "HRESULT");
}

TEST(Wrapper, FilesThatAreNoModuleAreRefused) {
  const TempFile text(Text("no library"), ".txt");
  EXPECT_LT(CodeOf([] { Module::Load("wrapper-test-none"); }), 0);
  EXPECT_LT(CodeOf([&] { Module::Load(text.Path()); }), 0);
}

TEST(Wrapper, OpenTellsWhyAFileIsRefused) {
  const Module module = LoadModule();
  const TempFile text(Text("no photograph"), ".txt");
  EXPECT_EQ(CodeOf([&] { module.Open("wrapper-test-none.jpg"); }), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(CodeOf([&] { module.Open(text.Path()); }), LMD_E_BAD_FORMAT);
  EXPECT_EQ(module.TypeOf(text.Path()), FileType::Unknown);
}

TEST(Wrapper, AbsentValuesAreEmpty) {
  const TempFile jpeg(Jpeg().Frame(8, 8).Scan().Build());
  const TempFile png(Png().Header().End().Build(), ".png");
  for (const TempFile* file : {&jpeg, &png}) {
    const Photo photo = LoadModule().Open(file->Path());
    EXPECT_FALSE(photo.IsPanorama());
    EXPECT_FALSE(photo.Pose().heading || photo.Pose().pitch || photo.Pose().roll);
    EXPECT_FALSE(photo.Info16() || photo.Info17() || photo.Info17Triple() || photo.Info18());
    EXPECT_FALSE(photo.Info19() || photo.Info20() || photo.Info21());
    EXPECT_FALSE(photo.XmpPacket());
  }
  EXPECT_EQ(LoadModule().Open(png.Path()).Type(), FileType::Png);
  EXPECT_TRUE(LoadModule().Open(png.Path()).Records().empty());
}

TEST(Wrapper, MakerNoteValuesAreExact) {
  const TempFile file(SamsungJpeg(
      {kNoteBound, kNote.Long(0x10, {7}), NoteSRational(0x11, {{1, 3}, {-2, 5}, {4, 1}}),
       kNote.Undefined(0x12, {1, 2, 3, 4, 5}), kNote.Undefined(0x13, {9}),
       NoteSLong(0x14, {10, 20, 30}), kNote.Undefined(0x15, {6, 7, 8, 9, 10, 11})}));
  const Photo photo = LoadModule().Open(file.Path());
  EXPECT_EQ(photo.Info16(), 7U);
  const auto rationals = photo.Info17();
  ASSERT_TRUE(rationals);
  EXPECT_EQ(*rationals, (std::vector<lumidex::SignedRational>{{1, 3}, {-2, 5}, {4, 1}}));
  EXPECT_EQ(photo.Info17Triple(), (std::array{1.0 / 3, -2.0 / 5, 4.0}));
  EXPECT_EQ(photo.Info18(), (Bytes{1, 2, 3, 4, 5}));
  EXPECT_EQ(photo.Info19(), Bytes{9});
  EXPECT_EQ(photo.Info20(), (std::array{10U, 20U, 30U}));
  EXPECT_EQ(photo.Info21(), (Bytes{6, 7, 8, 9, 10, 11}));
}

TEST(Wrapper, ValueOfAWrongTypeIsAnError) {
  const TempFile file(SamsungJpeg({kNoteBound, kNote.Undefined(0x10, {1, 2, 3, 4, 5})}));
  const Photo photo = LoadModule().Open(file.Path());
  EXPECT_EQ(CodeOf([&] { photo.Info16(); }), LMD_E_TYPE_MISMATCH_16);
}

TEST(Wrapper, RecordsAreTypedValues) {
  const Tiff tiff(ByteOrder::LittleEndian);
  const Directory exif = {tiff.Rational(0x829A, {{1, 250}, {3, 0}}), tiff.Short(0xA001, {2})};
  const Directory ifd0 = {tiff.Ascii(271, "Example"), tiff.Child(0x8769, exif)};
  const TempFile file(Jpeg().Exif(tiff.Build(ifd0)).Frame(640, 480).Scan().Build());
  const auto records = LoadModule().Open(file.Path()).Records();

  const Record* width = Find(records, LMD_GROUP_BASICS, 256);
  ASSERT_NE(width, nullptr);
  ASSERT_NE(width->As<std::vector<std::uint32_t>>(), nullptr);
  EXPECT_EQ(*width->As<std::vector<std::uint32_t>>(), std::vector<std::uint32_t>{640});
  EXPECT_EQ(width->As<std::string>(), nullptr);
  const Record* make = Find(records, LMD_GROUP_IFD0, 271);
  ASSERT_TRUE(make != nullptr && make->As<std::string>() != nullptr);
  EXPECT_EQ(*make->As<std::string>(), "Example");
  const Record* exposure = Find(records, LMD_GROUP_EXIF, 0x829A);
  ASSERT_TRUE(exposure != nullptr && exposure->As<std::vector<lumidex::Rational>>() != nullptr);
  const auto& times = *exposure->As<std::vector<lumidex::Rational>>();
  EXPECT_EQ(times, (std::vector<lumidex::Rational>{{1, 250}, {3, 0}}));
  EXPECT_EQ(times[0].ToDouble(), 0.004);
}

// The value of a record of raw bytes, which must have lost nothing.
lumidex::Value ValueOf(std::uint32_t type, Bytes bytes) {
  const CInfoRecord record = {1,  2, type, static_cast<std::uint32_t>(bytes.size()), bytes.data(),
                              0.0};
  return lumidex::detail::ValueOf(record);
}

TEST(Wrapper, EveryRecordTypeHasAValueType) {
  using lumidex::SignedRational;
  const Bytes eight = {0xFE, 0xFF, 0xFF, 0xFF, 3, 0, 0, 0};
  EXPECT_EQ(ValueOf(LMD_RECORD_INT32, eight), lumidex::Value(std::vector<std::int32_t>{-2, 3}));
  EXPECT_EQ(ValueOf(LMD_RECORD_SRATIONAL, eight),
            lumidex::Value(std::vector<SignedRational>{{-2, 3}}));
  EXPECT_EQ(ValueOf(LMD_RECORD_DOUBLE, {0, 0, 0, 0, 0, 0, 0xF8, 0x3F}),
            lumidex::Value(std::vector<double>{1.5}));
  EXPECT_EQ(ValueOf(LMD_RECORD_ASCII, {'a', 'b', 0}), lumidex::Value(std::string("ab")));
  EXPECT_EQ(ValueOf(LMD_RECORD_ASCII, {'a', 'b'}), lumidex::Value(std::string("ab")));
  EXPECT_EQ(ValueOf(LMD_RECORD_WIDE_TEXT, {0x41, 0, 0xAC, 0x20, 0, 0}),
            lumidex::Value(std::u16string(u"A\u20AC")));
  EXPECT_EQ(ValueOf(LMD_RECORD_BYTES, {1, 2, 3}), lumidex::Value(Bytes{1, 2, 3}));
  EXPECT_EQ(ValueOf(77, {1, 2, 3}), lumidex::Value(Bytes{1, 2, 3}));
  EXPECT_EQ(ValueOf(LMD_RECORD_UINT32, eight),
            lumidex::Value(std::vector<std::uint32_t>{0xFFFFFFFEU, 3}));
  EXPECT_EQ(ValueOf(LMD_RECORD_UINT32, {1, 0, 0, 0, 9}),
            lumidex::Value(std::vector<std::uint32_t>{1}));
  EXPECT_EQ(ValueOf(LMD_RECORD_URATIONAL, eight),
            lumidex::Value(std::vector<lumidex::Rational>{{0xFFFFFFFEU, 3}}));
}

TEST(Wrapper, RecordsGoInAsTheyComeOut) {
  const std::vector<Record> records = {{2, 271, std::string("Maker")},
                                       {4, 34855, std::vector<std::uint32_t>{400}},
                                       {4, 33434, std::vector<lumidex::Rational>{{1, 250}}},
                                       {64, 1, std::u16string(u"\u20AC")},
                                       {8, 27, Bytes{}}};
  const lumidex::detail::RawRecords raw(records);
  ASSERT_EQ(raw.Count(), 5U);
  EXPECT_EQ(raw.Data()[0].m_nSize, 6U);
  EXPECT_EQ(raw.Data()[3].m_nSize, 4U);
  EXPECT_EQ(raw.Data()[4].m_nSize, 0U);
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_EQ(raw.Data()[i].m_nGroup, records[i].group);
    EXPECT_EQ(raw.Data()[i].m_nId, records[i].id);
    EXPECT_EQ(lumidex::detail::ValueOf(raw.Data()[i]), records[i].value);
  }
  EXPECT_EQ(lumidex::detail::RawRecords({}).Data(), nullptr);
}

TEST(Wrapper, PanoramaHasItsPoseAndItsPacket) {
  const std::string packet = XmpPacket(
      "GPano:ProjectionType=\"equirectangular\" GPano:PoseHeadingDegrees=\"12.5\" "
      "GPano:PosePitchDegrees=\"-3\"");
  const TempFile jpeg(Jpeg().Xmp(packet).Frame(8, 8).Scan().Build());
  const Photo photo = LoadModule().Open(jpeg.Path());
  EXPECT_TRUE(photo.IsPanorama());
  EXPECT_EQ(photo.Pose().heading, 12.5F);
  EXPECT_EQ(photo.Pose().pitch, -3.0F);
  EXPECT_FALSE(photo.Pose().roll);
  EXPECT_EQ(photo.XmpPacket(), packet);
  const TempFile png(Png().Header().Xmp(packet).End().Build(), ".png");
  EXPECT_TRUE(LoadModule().Open(png.Path()).IsPanorama());
  EXPECT_EQ(LoadModule().Open(png.Path()).XmpPacket(), packet);
}

TEST(Wrapper, LargestPacketOfAJpegIsReadWhole) {
  const std::string packet(65504, 'x');
  const TempFile file(Jpeg().Xmp(packet).Frame(8, 8).Scan().Build());
  EXPECT_EQ(LoadModule().Open(file.Path()).XmpPacket(), packet);
}

// A chunk that tells of 4 GiB in a file of a few bytes.
TEST(Wrapper, PacketLargerThanItsFileIsAnError) {
  const Bytes data = XmpChunkData("equirectangular");
  const TempFile file(Png().Header().ChunkOfLength("iTXt", 0xFFFFFFF0U, data).Build(), ".png");
  const Photo photo = LoadModule().Open(file.Path());
  EXPECT_TRUE(photo.IsPanorama());
  EXPECT_EQ(CodeOf([&] { photo.XmpPacket(); }), LMD_E_READ_FAILED);
}

TEST(Wrapper, PhotoKeepsTheModuleLoaded) {
  const TempFile first(SamsungJpeg({kNoteBound, kNote.Long(0x10, {7})}));
  const TempFile second(SamsungJpeg({kNoteBound, kNote.Long(0x10, {8})}));
  Photo photo = LoadModule().Open(first.Path());
  EXPECT_EQ(photo.Info16(), 7U);
  photo = LoadModule().Open(second.Path());
  EXPECT_EQ(photo.Info16(), 8U);
  Photo moved = std::move(photo);
  EXPECT_EQ(moved.Info16(), 8U);
}

TEST(Wrapper, OneModuleServesManyThreads) {
  const Module module = LoadModule();
  const TempFile file(SamsungJpeg({kNoteBound, kNote.Long(0x10, {7})}));
  std::vector<std::thread> threads;
  std::atomic<int> right = 0;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 20; ++round) {
        right += module.Open(file.Path()).Info16() == 7U ? 1 : 0;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(right, 80);
}

}  // namespace
}  // namespace test
