// Creation and parses without memory for an object of a certain size.

#include <cstddef>
#include <cstdint>

#include <gtest/gtest.h>

#include "com/ClassFactory.h"
#include "com/RecordsTest.h"
#include "com/WriteTestSupport.h"
#include "container/ImageInfo.h"
#include "faults/Allocations.h"
#include "support/FullPhoto.h"
#include "support/Jpeg.h"
#include "support/StoreFile.h"
#include "support/Tiff.h"
#include "writer/TiffBlock.h"

namespace test {
namespace {

class OutOfMemoryTest : public ComTest {};

TEST_F(OutOfMemoryTest, FactoryWithoutMemoryClearsTheOutput) {
  void* out = this;
  const NoMemoryOf noMemory(sizeof(CClassFactory));
  EXPECT_EQ(DllGetClassObject(CLSID_Lumidex, IID_IClassFactory, &out), E_OUTOFMEMORY);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(m_cObjects, 0);
}

TEST_F(OutOfMemoryTest, ObjectWithoutMemoryIsTold) {
  HRESULT result = S_OK;
  const NoMemoryOf noMemory(sizeof(CLumidex));
  EXPECT_EQ(CLumidex::CreateInstance(nullptr, &result), nullptr);
  EXPECT_EQ(result, E_OUTOFMEMORY);
  EXPECT_EQ(CLumidex::CreateInstance(nullptr, nullptr), nullptr);
  EXPECT_EQ(m_cObjects, 0);
}

TEST_F(OutOfMemoryTest, FactoryTellsOfAnObjectWithoutMemory) {
  const Ref<IClassFactory> factory = NewFactory();
  void* out = nullptr;
  const NoMemoryOf noMemory(sizeof(CLumidex));
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_ILumidex, &out), E_OUTOFMEMORY);
  EXPECT_EQ(m_cObjects, 1);
}

TEST_F(OutOfMemoryTest, ObjectWithoutAContainerIsCreatedAndOpensNoJpeg) {
  Ref<ILumidex> object;
  {
    const Ref<IClassFactory> factory = NewFactory();
    const NoMemoryOf noMemory(sizeof(CJpegContainer));
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_ILumidex, object.OutVoid()), S_OK);
  }
  const TempFile jpeg(FullPhoto());
  std::uint32_t value = 0;
  EXPECT_EQ(object->GetFileType(jpeg.Path()), 1);
  EXPECT_EQ(object->Open(jpeg.Path()), LMD_E_INVALID_ARG);
  EXPECT_EQ(object->GetInfo16(&value), LMD_E_INVALID_ARG);
  EXPECT_EQ(object->IsPanorama(&value), LMD_E_INVALID_ARG);

  std::uint64_t garbage = 0;
  auto* info = reinterpret_cast<IImageInfo*>(&garbage);
  EXPECT_EQ(object->ParseBasic(jpeg.Path(), &info), LMD_E_INVALID_ARG);
  EXPECT_EQ(info, nullptr);

  const TempFile png(Png().Header().Xmp("equirectangular").End().Build(), ".png");
  EXPECT_EQ(object->Open(png.Path()), S_OK);
  EXPECT_EQ(object->IsPanorama(&value), S_OK);
  EXPECT_EQ(value, 1U);
}

TEST_F(OutOfMemoryTest, WriterWithoutItsBlockIsToldAndWritesNothing) {
  const Ref<ILumidex> object = NewLumidex();
  const TempFile source(SmallJpeg());
  const NewPath output;
  Records records;
  records.Ascii(2, 271, "Cam");
  const NoMemoryOf noMemory(TiffBlock::kCapacity);
  EXPECT_EQ(object->WriteMetadata(source.Path(), output.Path(), records.Count(), records.Data(), 0,
                                  0, nullptr, 0),
            E_OUTOFMEMORY);
  EXPECT_FALSE(output.Exists());
}

// Stands in front of a block of memory for pieces.
constexpr std::size_t kBlockHead = 16;

// One that is too large for the room that a store begins with.
TEST_F(OutOfMemoryTest, ValueWithoutMemoryIsStoredWithoutData) {
  constexpr std::uint32_t kCount = 800;
  constexpr std::uint32_t kSize = 8 * kCount;
  const Tiff tiff(ByteOrder::LittleEndian);
  StoreFile file(tiff.Build({tiff.Raw(1000, 5, kCount, Zeros(kSize)), tiff.Short(1001, {7})}));
  {
    const NoMemoryOf noMemory(kBlockHead + kSize);
    EXPECT_EQ(file.ParseTiff(), S_OK);
  }
  const TagEntry* const large = file.Store().m_fnGetBlock(BLOCK_IFD0)->Find(1000);
  ASSERT_NE(large, nullptr);
  EXPECT_EQ(large->m_nCount, kCount);
  EXPECT_EQ(large->m_nSize, kSize);
  EXPECT_EQ(large->m_pData, nullptr);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1001), (Stored{1001, 3, 1, "0700"}));
}

class ParseOutOfMemoryTest : public ComTest {
 protected:
  // Parses a file whose allocations of this size fail; the result object stays with the test.
  HRESULT Parse(std::size_t size) {
    const NoMemoryOf noMemory(size);
    return m_container.Parse(m_file.Path(), 0x001, m_info.Out());
  }

  TempFile m_file{SmallJpeg()};
  CJpegContainer m_container;
  Ref<IImageInfo> m_info;
};

TEST_F(ParseOutOfMemoryTest, NoListGivesNoResultObject) {
  EXPECT_EQ(Parse(sizeof(OwnedRecordList)), LMD_E_OUT_OF_MEMORY);
  EXPECT_EQ(m_info.Get(), nullptr);
}

TEST_F(ParseOutOfMemoryTest, NoResultObjectGivesNull) {
  EXPECT_EQ(Parse(sizeof(CImageInfo)), LMD_E_OUT_OF_MEMORY);
  EXPECT_EQ(m_info.Get(), nullptr);
  EXPECT_EQ(m_cObjects, 0);
}

TEST_F(ParseOutOfMemoryTest, NoDriverLeavesAnEmptyResultWithTheCaller) {
  EXPECT_EQ(Parse(sizeof(VxMetadataWrapper)), LMD_E_OUT_OF_MEMORY);
  ASSERT_NE(m_info.Get(), nullptr);
  EXPECT_EQ(m_info->GetState(), 1);
  EXPECT_EQ(m_info->GetInfoList()->m_nCount, 0);
  EXPECT_EQ(m_cObjects, 1);
}

// A photograph with this many records, and the array of these: no other block of a parse has its
// size.
constexpr std::int32_t kRecords = 45;
constexpr std::size_t kRecordArray = kBlockHead + kRecords * sizeof(CInfoRecord);

Jpeg PhotoOfManyRecords() {
  constexpr std::int32_t kBasics = 5;
  Directory tags;
  const Tiff tiff(ByteOrder::LittleEndian);
  for (std::uint16_t i = 0; i < kRecords - kBasics; ++i)
    tags.push_back(tiff.Short(0x9000 + i, {i}));
  return Jpeg().Exif(tiff.Build(tags));
}

TEST_F(ParseOutOfMemoryTest, NoArrayLeavesTheCountWithoutRecords) {
  const TempFile file(PhotoOfManyRecords().Frame(8, 8).Scan().Build());
  {
    const NoMemoryOf noMemory(kRecordArray);
    EXPECT_EQ(m_container.Parse(file.Path(), 0x003, m_info.Out()), LMD_E_OUT_OF_MEMORY);
  }
  ASSERT_NE(m_info.Get(), nullptr);
  EXPECT_EQ(m_info->GetInfoList()->m_nCount, kRecords);
  EXPECT_EQ(m_info->GetInfoList()->m_pRecords, nullptr);
}

TEST_F(ParseOutOfMemoryTest, ContainerIsUsableAfterwards) {
  EXPECT_EQ(Parse(sizeof(VxMetadataWrapper)), LMD_E_OUT_OF_MEMORY);
  m_info.Detach()->Release();
  EXPECT_EQ(Parse(0), S_OK);
  EXPECT_EQ(m_info->GetInfoList()->m_nCount, 5);
}

using OpenOutOfMemoryTest = RecordsTest;

TEST_F(OpenOutOfMemoryTest, FailedParseIsTheResultAndTheFileIsCurrent) {
  const TempFile before(FullPhoto());
  ASSERT_EQ(m_object->Open(before.Path()), S_OK);
  const TempFile file(PhotoOfManyRecords().Xmp("no packet").Frame(8, 8).Scan().Build());
  {
    const NoMemoryOf noMemory(kRecordArray);
    EXPECT_EQ(m_object->Open(file.Path()), LMD_E_OUT_OF_MEMORY);
  }
  std::uint32_t value = 0;
  EXPECT_EQ(m_object->GetInfo16(&value), LMD_E_NOT_FOUND);
  // The locator finds the segment in the new file.
  EXPECT_EQ(m_object->IsPanorama(&value), LMD_E_NOT_PANORAMA);
}

TEST_F(OpenOutOfMemoryTest, NoResultObjectLeavesNone) {
  const TempFile file(FullPhoto());
  ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  {
    const NoMemoryOf noMemory(sizeof(CImageInfo));
    EXPECT_EQ(m_object->Open(file.Path()), LMD_E_OUT_OF_MEMORY);
  }
  std::uint32_t value = 0;
  EXPECT_EQ(m_object->GetInfo16(&value), LMD_E_INVALID_ARG);
  EXPECT_EQ(m_object->IsPanorama(&value), LMD_E_INVALID_ARG);
}

}  // namespace
}  // namespace test
