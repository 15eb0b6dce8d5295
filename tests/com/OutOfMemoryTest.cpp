// Creation and parses when there is no memory: the allocation functions are replaced for this
// program and fail on demand, by the size asked for or by the number of the call.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>

#include <gtest/gtest.h>

#include "RecordsTest.h"
#include "com/ClassFactory.h"
#include "container/ImageInfo.h"
#include "support/FullPhoto.h"
#include "support/Jpeg.h"

namespace {

// No failures while both are 0.
thread_local std::size_t g_failingSize = 0;
thread_local int g_callsToFailure = 0;

bool IsToFail(std::size_t size) {
  if (g_callsToFailure != 0 && --g_callsToFailure == 0) return true;
  return g_failingSize != 0 && size == g_failingSize;
}

void* AllocateOrNull(std::size_t size) noexcept {
  return IsToFail(size) ? nullptr : std::malloc(size != 0 ? size : 1);
}

void* AllocateOrThrow(std::size_t size) {
  void* const memory = AllocateOrNull(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void* operator new(std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return AllocateOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return AllocateOrNull(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}

namespace test {
namespace {

// Every allocation of this size fails.
class NoMemoryOf {
 public:
  explicit NoMemoryOf(std::size_t size) { g_failingSize = size; }
  ~NoMemoryOf() { g_failingSize = 0; }
  NoMemoryOf(const NoMemoryOf&) = delete;
  NoMemoryOf& operator=(const NoMemoryOf&) = delete;
};

// The allocation with this number, from 1, fails; the others do not.
class FailingCall {
 public:
  explicit FailingCall(int number) { g_callsToFailure = number; }
  ~FailingCall() { g_callsToFailure = 0; }
  FailingCall(const FailingCall&) = delete;
  FailingCall& operator=(const FailingCall&) = delete;

  bool WasMet() const { return g_callsToFailure <= 0; }
};

// An array of records is allocated with its count in front.
constexpr std::size_t RecordArraySize(std::size_t count) {
  return count * sizeof(CInfoRecord) + sizeof(std::size_t);
}

Bytes PlainJpeg() {
  return Jpeg().Frame(8, 8).Scan().Build();
}

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

class ParseOutOfMemoryTest : public ComTest {
 protected:
  // Parses a file whose allocations of this size fail; the result object stays with the test.
  HRESULT Parse(std::size_t size) {
    const NoMemoryOf noMemory(size);
    return m_container.Parse(m_file.Path(), 0x001, m_info.Out());
  }

  TempFile m_file{PlainJpeg()};
  CJpegContainer m_container;
  Ref<IImageInfo> m_info;
};

TEST_F(ParseOutOfMemoryTest, NoListGivesNoResultObject) {
  EXPECT_EQ(Parse(sizeof(CMETADATA_INFO_LIST)), LMD_E_OUT_OF_MEMORY);
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

// By design: not a code of memory.
TEST_F(ParseOutOfMemoryTest, NoStoreIsAPointerError) {
  EXPECT_EQ(Parse(sizeof(VxMetadata)), E_POINTER);
  ASSERT_NE(m_info.Get(), nullptr);
  EXPECT_EQ(m_info->GetInfoList()->m_nCount, 0);
}

TEST_F(ParseOutOfMemoryTest, NoArrayLeavesTheCountWithoutRecords) {
  EXPECT_EQ(Parse(RecordArraySize(5)), LMD_E_OUT_OF_MEMORY);
  ASSERT_NE(m_info.Get(), nullptr);
  EXPECT_EQ(m_info->GetInfoList()->m_nCount, 5);
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
  const TempFile file(Jpeg().Xmp("no packet").Frame(8, 8).Scan().Build());
  {
    const NoMemoryOf noMemory(sizeof(VxMetadata));
    EXPECT_EQ(m_object->Open(file.Path()), E_POINTER);
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

TEST_F(OpenOutOfMemoryTest, AnyFailingAllocationEndsInAKnownCode) {
  const TempFile file(FullPhoto());
  ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  const std::int32_t objects = m_cObjects;
  int number = 1;
  for (bool wasMet = true; wasMet; ++number) {
    HRESULT result = S_OK;
    {
      const FailingCall call(number);
      result = m_object->Open(file.Path());
      wasMet = call.WasMet();
    }
    EXPECT_TRUE(result == S_OK || result == E_POINTER || result == LMD_E_OUT_OF_MEMORY ||
                result == E_OUTOFMEMORY || result == LMD_E_BAD_FORMAT)
        << number << " gives " << result;
    EXPECT_LE(m_cObjects, objects);
    std::uint32_t value = 0;
    EXPECT_EQ(m_object->GetInfo16(nullptr), LMD_E_INVALID_ARG);
    m_object->GetInfo16(&value);
  }
  EXPECT_GT(number, 20);
  EXPECT_EQ(m_object->Open(file.Path()), S_OK);
  EXPECT_EQ(m_cObjects, objects);
}

TEST_F(OpenOutOfMemoryTest, PanoramaOfAPngEndsInAKnownCode) {
  const TempFile file(Png().Header().Xmp("equirectangular").End().Build(), ".png");
  ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  int number = 1;
  for (bool wasMet = true; wasMet; ++number) {
    std::uint32_t flag = 99;
    HRESULT result = S_OK;
    {
      const FailingCall call(number);
      result = m_object->IsPanorama(&flag);
      wasMet = call.WasMet();
    }
    if (result == S_OK) continue;
    EXPECT_TRUE(result == LMD_E_OUT_OF_MEMORY || result == E_OUTOFMEMORY ||
                result == LMD_E_NOT_FOUND || result == LMD_E_BAD_FORMAT)
        << number << " gives " << result;
    EXPECT_EQ(flag, 0U);
  }
  EXPECT_GT(number, 2);
}

}  // namespace
}  // namespace test
