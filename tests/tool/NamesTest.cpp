#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "ResultNames.h"
#include "core/VxMetadataWrapper.h"
#include "exif/VxMetadata.h"
#include "names/Names.h"

namespace {

std::string InBlock(std::int32_t block, std::uint32_t tag) {
  const tool::TagRow* row = tool::FindInBlock(block, tag);
  return row != nullptr ? row->name : "-";
}

std::string InGroup(std::uint32_t group, std::uint32_t id) {
  const tool::TagRow* row = tool::FindInGroup(group, id);
  return row != nullptr ? row->name : "-";
}

TEST(Names, TagsByBlock) {
  EXPECT_EQ(InBlock(BLOCK_IFD0, 271), "Make");
  EXPECT_EQ(InBlock(BLOCK_EXIF, 0x9003), "DateTimeOriginal");
  EXPECT_EQ(InBlock(BLOCK_GPS, 0), "GPSVersionID");
  EXPECT_EQ(InBlock(BLOCK_GPS, 0x1F), "GPSHPositioningError");
  EXPECT_EQ(InBlock(BLOCK_IFD1, 0x0201), "JPEGInterchangeFormat");
  EXPECT_EQ(InBlock(BLOCK_IPTC, 22), "Keywords");
  EXPECT_EQ(InBlock(BLOCK_MAKERNOTE_SUMMARY, 11), "SensorFormatFactor");
  EXPECT_EQ(InBlock(BLOCK_MAKERNOTE, 0xA003), "LensId");
  EXPECT_EQ(InBlock(BLOCK_ICC, 257), "ProfileDescription");
  EXPECT_EQ(InBlock(BLOCK_XMP, 0xAB19), "GPano:ProjectionType");
  EXPECT_EQ(InBlock(BLOCK_XMP_REGIONS, 0xAB09), "Region");
}

TEST(Names, OneNumberMeansDifferentThingsInDifferentBlocks) {
  EXPECT_EQ(InBlock(BLOCK_EXIF, 1), "InteroperabilityIndex");
  EXPECT_EQ(InBlock(BLOCK_GPS, 1), "GPSLatitudeRef");
  EXPECT_EQ(InBlock(BLOCK_ICC, 1), "ProfileSize");
  EXPECT_EQ(InBlock(BLOCK_IFD0, 1), "-");
  EXPECT_EQ(InBlock(BLOCK_EXIF, 0xA003), "PixelYDimension");
}

TEST(Names, DirectoriesKnowEachOthersTags) {
  EXPECT_EQ(InBlock(BLOCK_IFD0, 0x829A), "ExposureTime");
  EXPECT_EQ(InBlock(BLOCK_EXIF, 0x0112), "Orientation");
  EXPECT_EQ(InBlock(kSubIfdBlock | 3, 0x0100), "ImageWidth");
}

TEST(Names, RecordsByGroup) {
  EXPECT_EQ(InGroup(CATEGORY_BASICS, 11), "ColorSpace");
  EXPECT_EQ(InGroup(CATEGORY_BASICS, 271), "-");
  EXPECT_EQ(InGroup(CATEGORY_DATES, 306), "DateTime");
  EXPECT_EQ(InGroup(CATEGORY_DATES, 36867), "DateTimeOriginal");
  EXPECT_EQ(InGroup(CATEGORY_MAKERNOTE, 16), "Info16");
  EXPECT_EQ(InGroup(CATEGORY_IFD1, 259), "Compression");
  EXPECT_EQ(InGroup(CATEGORY_XMP, 0xAB0A), "RegionMarker");
  EXPECT_EQ(InGroup(0x100, 271), "-");
}

TEST(Names, UnknownNumbersHaveNoName) {
  EXPECT_EQ(InBlock(BLOCK_IFD0, 0xFE00), "-");
  EXPECT_EQ(InBlock(0, 271), "-");
  EXPECT_EQ(InBlock(11, 271), "-");
  EXPECT_EQ(tool::BlockTitle(11), "?");
  EXPECT_EQ(tool::GroupTitle(0x100), "?");
  EXPECT_EQ(tool::RecordTypeName(7), "?");
  EXPECT_EQ(tool::FileTypeName(3), "unknown");
}

TEST(Names, BlocksGroupsAndTypes) {
  EXPECT_EQ(tool::BlockTitle(BLOCK_MAKERNOTE_SUMMARY), "Maker-note summary");
  EXPECT_EQ(tool::BlockTitle(kSubIfdBlock | 2), "SubIFD 2");
  EXPECT_EQ(tool::GroupTitle(CATEGORY_IFD1), "IFD1");
  EXPECT_EQ(tool::RecordTypeName(4098), "urational");
  EXPECT_EQ(tool::FileTypeName(5), "PNG");
}

TEST(Names, ResultCodes) {
  EXPECT_EQ(tool::DescribeResult(LMD_E_BAD_FORMAT),
            "LMD_E_BAD_FORMAT (0x8004C022): the file type is not supported here");
  EXPECT_EQ(tool::DescribeResult(E_OUTOFMEMORY), "E_OUTOFMEMORY (0x8007000E): out of memory");
  EXPECT_EQ(tool::ResultNumber(S_OK), "0x00000000");
  EXPECT_EQ(tool::DescribeResult(static_cast<HRESULT>(0x80040000U)),
            "HRESULT (0x80040000): a code without a description");
}

}  // namespace
