#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

#include "container/ImageInfo.h"
#include "core/VxMetadataWrapper.h"
#include "support/FullPhoto.h"
#include "support/Jpeg.h"
#include "support/LogCapture.h"
#include "support/TempFile.h"
#include "support/Tiff.h"

namespace test {
namespace {

// The outcome of one parse, with the list that it filled.
class ParseRun {
 public:
  ParseRun(const WCHAR* path, std::uint32_t kind, std::uint32_t mask)
      : m_info(new CImageInfo(std::make_unique<OwnedRecordList>())) {
    m_info->AddRef();
    result = VxMetadataWrapper().Parse(path, kind, mask, m_info);
  }
  ~ParseRun() { m_info->Release(); }
  ParseRun(const ParseRun&) = delete;
  ParseRun& operator=(const ParseRun&) = delete;

  const CMETADATA_INFO_LIST& List() const { return *m_info->GetInfoList(); }

  std::vector<std::uint32_t> Ids() const {
    std::vector<std::uint32_t> ids;
    for (std::int32_t i = 0; i < List().m_nCount; ++i) ids.push_back(List().m_pRecords[i].m_nId);
    return ids;
  }

  HRESULT result = E_FAIL;

 private:
  IImageInfo* m_info;
};

using Ids = std::vector<std::uint32_t>;
const Ids kBasicIds = {256, 257, 274, 277, 11};

TEST(ParseDriver, JpegWithoutExifGivesTheFiveBasics) {
  const TempFile file(Jpeg().Frame(640, 480).Scan().Build());
  const ParseRun run(file.Path(), 1, 0x001);
  EXPECT_EQ(run.result, S_OK);
  ASSERT_EQ(run.Ids(), kBasicIds);
  EXPECT_EQ(Hex({run.List().m_pRecords[0].m_pData, 4}), "80020000");
  EXPECT_EQ(Hex({run.List().m_pRecords[1].m_pData, 4}), "e0010000");
  EXPECT_EQ(Hex({run.List().m_pRecords[2].m_pData, 4}), "01000000");
  EXPECT_EQ(Hex({run.List().m_pRecords[3].m_pData, 4}), "03000000");
  EXPECT_EQ(Hex({run.List().m_pRecords[4].m_pData, 4}), "00000000");
}

TEST(ParseDriver, FileWithoutDatesGivesNoRecords) {
  const TempFile file(Jpeg().Frame(640, 480).Build());
  const ParseRun run(file.Path(), 1, 0x020);
  EXPECT_EQ(run.result, S_OK);
  EXPECT_EQ(run.List().m_nCount, 0);
  EXPECT_EQ(run.List().m_pRecords, nullptr);
  EXPECT_EQ(run.List().m_nState, 1U);
}

TEST(ParseDriver, Ifd1IsReadWhenItsRecordsAreAskedFor) {
  const TempFile file(FullPhoto());
  const ParseRun run(file.Path(), 1, 0x200);
  ASSERT_EQ(run.Ids(), Ids{0x0103});
  EXPECT_EQ(run.List().m_pRecords[0].m_nGroup, 512U);
  EXPECT_EQ(Hex({run.List().m_pRecords[0].m_pData, 4}), "06000000");
  EXPECT_TRUE(ParseRun(file.Path(), 1, 0x100).Ids().empty());
}

TEST(ParseDriver, OtherKindsOpenTheFileButHaveNoReader) {
  const TempFile file(FullPhoto());
  for (const std::uint32_t kind : {2U, 3U}) {
    const ParseRun run(file.Path(), kind, 0xFFF);
    EXPECT_EQ(run.result, S_OK) << kind;
    EXPECT_EQ(run.Ids(), kBasicIds) << kind;
    EXPECT_EQ(Hex({run.List().m_pRecords[0].m_pData, 4}), "00000000") << kind;

    VxMetadata store;
    VxMetadataWrapper::Read(store, file.Path(), kind, 0xFFF);
    EXPECT_TRUE(store.m_pFile && store.m_pFile->IsOpen()) << kind;
    EXPECT_EQ(store.m_nFileType, kind);
  }
}

TEST(ParseDriver, UnknownKindDoesNotOpenTheFile) {
  const TempFile file(FullPhoto());
  for (const std::uint32_t kind : {0U, 4U, 5U}) {
    VxMetadata store;
    VxMetadataWrapper::Read(store, file.Path(), kind, 0xFFF);
    EXPECT_FALSE(store.m_pFile) << kind;
    EXPECT_EQ(store.m_nParseFlags, 0U) << kind;
    EXPECT_TRUE(store.m_strPath.empty()) << kind;
  }
}

TEST(ParseDriver, FileThatCannotBeOpenedGivesNoErrorAndTheBasicsOfAnEmptyStore) {
  const WideString missing = TempPath();
  EXPECT_EQ(ParseRun(missing.c_str(), 1, 0x001).result, S_OK);
  EXPECT_EQ(ParseRun(missing.c_str(), 1, 0x001).Ids(), kBasicIds);
  EXPECT_TRUE(ParseRun(missing.c_str(), 1, 0xFDE).Ids().empty());
  EXPECT_EQ(ParseRun(nullptr, 1, 0x001).Ids(), kBasicIds);
  EXPECT_EQ(ParseRun(LMD_W(""), 1, 0x001).Ids(), kBasicIds);
}

TEST(ParseDriver, EmptyMaskGivesNoRecords) {
  const TempFile file(FullPhoto());
  const ParseRun run(file.Path(), 1, 0);
  EXPECT_EQ(run.result, S_OK);
  EXPECT_EQ(run.List().m_nCount, 0);
}

TEST(ParseDriver, MaskIsTheParseFlagsOfTheStore) {
  const TempFile file(FullPhoto());
  VxMetadata store;
  VxMetadataWrapper::Read(store, file.Path(), 1, CATEGORY_IFD0 | CATEGORY_GPS);
  EXPECT_EQ(store.m_nParseFlags, 0x00AU);
  EXPECT_FALSE(store.m_fnGetBlock(BLOCK_IFD0)->IsEmpty());
  EXPECT_FALSE(store.m_fnGetBlock(BLOCK_GPS)->IsEmpty());
  EXPECT_TRUE(store.m_fnGetBlock(BLOCK_EXIF)->IsEmpty());
  EXPECT_TRUE(store.m_fnGetBlock(BLOCK_IPTC)->IsEmpty());
  EXPECT_TRUE(store.m_fnGetBlock(BLOCK_XMP)->IsEmpty());
  EXPECT_TRUE(store.m_fnGetBlock(BLOCK_MAKERNOTE)->IsEmpty());
  EXPECT_TRUE(store.m_fnGetBlock(BLOCK_ICC)->IsEmpty());
}

TEST(ParseDriver, StoreThatHasAFileKeepsIt) {
  const TempFile first(Jpeg().Frame(10, 20).Build());
  const TempFile second(Jpeg().Frame(30, 40).Build());
  VxMetadata store;
  VxMetadataWrapper::Read(store, first.Path(), 1, 0xFFF);
  VxMetadataWrapper::Read(store, second.Path(), 1, 0xFFF);
  EXPECT_EQ(store.m_nImageWidth, 10U);
}

// The exposure time stands only in IFD0.
Bytes PhotoThatNeedsTheMerge() {
  const Tiff tiff(ByteOrder::LittleEndian);
  return Jpeg()
      .Exif(tiff.Build(
          {tiff.Rational(0x829A, {{1, 60}}), tiff.Child(0x8769, {tiff.Short(0x8822, {2})})}))
      .Build();
}

TEST(ParseDriver, MergesAfterTheReader) {
  const TempFile file(PhotoThatNeedsTheMerge());
  VxMetadata store;
  VxMetadataWrapper::Read(store, file.Path(), 1, kFullMask);
  EXPECT_TRUE(store.m_fnGetBlock(BLOCK_EXIF)->Contains(0x829A));
}

TEST(ParseDriver, Bit31OfTheMaskSuppressesTheMerge) {
  const TempFile file(PhotoThatNeedsTheMerge());
  VxMetadata store;
  VxMetadataWrapper::Read(store, file.Path(), 1, kFullMask | 0x80000000);
  EXPECT_FALSE(store.m_fnGetBlock(BLOCK_EXIF)->Contains(0x829A));
  EXPECT_TRUE(store.m_fnGetBlock(BLOCK_EXIF)->Contains(0x8822));
}

TEST(ParseDriver, OtherKindsAreNotMerged) {
  const TempFile file(PhotoThatNeedsTheMerge());
  const LogCapture log;
  VxMetadata store;
  VxMetadataWrapper::Read(store, file.Path(), 2, kFullMask);
  EXPECT_TRUE(log.Lines().empty());
}

TEST(ParseDriver, RecordsOutliveTheStoreInTheirOrder) {
  const TempFile file(FullPhoto());
  const ParseRun run(file.Path(), 1, 0xFFF);
  const CMETADATA_INFO_LIST& list = run.List();
  ASSERT_GT(list.m_nCount, 5);
  std::uint32_t ended = 0;
  std::uint32_t current = 0;
  for (std::int32_t i = 0; i < list.m_nCount; ++i) {
    const std::uint32_t group = list.m_pRecords[i].m_nGroup;
    EXPECT_EQ(ended & group, 0U) << "group " << group << " is in two places";
    if (group == current) continue;
    ended |= current;
    current = group;
  }
  EXPECT_EQ(list.m_pRecords[0].m_nGroup, 1U);
  EXPECT_EQ(list.m_pRecords[list.m_nCount - 1].m_nGroup, 64U);
}

TEST(ParseDriver, FileIsClosedWhenTheParseIsDone) {
  for (const std::uint32_t kind : {1U, 2U}) {
    const WideString path = TempPath();
    WriteFile(path, FullPhoto());
    const ParseRun run(path.c_str(), kind, 0xFFF);
    EXPECT_TRUE(std::filesystem::remove(std::filesystem::path(path)));
    EXPECT_GE(run.List().m_nCount, 5);
  }
}

TEST(ParseDriver, KeepsNothingForTheNextParse) {
  const TempFile full(FullPhoto());
  const TempFile plain(Jpeg().Frame(640, 480).Build());
  VxMetadataWrapper wrapper;
  auto* first = new CImageInfo(std::make_unique<OwnedRecordList>());
  auto* second = new CImageInfo(std::make_unique<OwnedRecordList>());
  first->AddRef();
  second->AddRef();
  EXPECT_EQ(wrapper.Parse(full.Path(), 1, 0xFFF, first), S_OK);
  EXPECT_EQ(wrapper.Parse(plain.Path(), 1, 0xFFF, second), S_OK);
  EXPECT_GT(first->GetInfoList()->m_nCount, 5);
  EXPECT_EQ(second->GetInfoList()->m_nCount, 5);
  first->Release();
  second->Release();
}

TEST(ParseDriver, ColourSpaceOfThePhotographIsTold) {
  const Tiff tiff(ByteOrder::BigEndian);
  const auto code = [&tiff](const Directory& exif) {
    const TempFile file(Jpeg().Exif(tiff.Build({tiff.Child(0x8769, exif)})).Build());
    const ParseRun run(file.Path(), 1, 0x00F);
    return Hex({run.List().m_pRecords[4].m_pData, 4});
  };
  EXPECT_EQ(code({tiff.Short(0xA001, {2})}), "03000000");
  EXPECT_EQ(code({tiff.Short(0xA001, {1})}), "01000000");
  EXPECT_EQ(code({tiff.Ascii(0xA001, "R98")}), "01000000");
  EXPECT_EQ(code({tiff.Ascii(0xA001, "R03")}), "03000000");
  EXPECT_EQ(code({tiff.Short(0xA000, {1})}), "00000000");
}

}  // namespace
}  // namespace test
