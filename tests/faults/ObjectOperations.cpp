// Making an object, and making a file its current one.

#include <gtest/gtest.h>

#include "com/ComTest.h"
#include "faults/Inputs.h"
#include "faults/Operation.h"
#include "support/FullPhoto.h"
#include "support/TempFile.h"

namespace test {
namespace {

// An object of its own, by way of the class factory.
class Creation final : public Scenario {
 public:
  void Prepare(ILumidex&) override {}

  HRESULT Run(ILumidex&) override {
    void* out = this;
    const HRESULT result = DllGetClassObject(CLSID_Lumidex, IID_IClassFactory, &out);
    if (FAILED(result)) {
      EXPECT_EQ(out, nullptr);
      return result;
    }
    const Ref<IClassFactory> factory(static_cast<IClassFactory*>(out));
    return factory->CreateInstance(nullptr, IID_ILumidex, reinterpret_cast<void**>(&m_created));
  }

  // One without its parser lives and opens no JPEG.
  void Check(ILumidex&, HRESULT result) override {
    ASSERT_EQ(m_created == nullptr, FAILED(result));
    if (m_created == nullptr) return;
    const Ref<ILumidex> object(m_created);
    m_created = nullptr;
    EXPECT_EQ(object->GetFileType(m_photo.Path()), 1);
    const HRESULT opened = object->Open(m_photo.Path());
    EXPECT_TRUE(opened == S_OK || opened == LMD_E_INVALID_ARG);
  }

 private:
  const TempFile m_photo{FullPhoto()};
  ILumidex* m_created = nullptr;
};

class FileTypeTest final : public Scenario {
 public:
  void Prepare(ILumidex&) override {}
  HRESULT Run(ILumidex& object) override { return object.GetFileType(m_photo.Path()); }
  void Check(ILumidex&, HRESULT) override {}

 private:
  const TempFile m_photo{FullPhoto()};
};

// Opens a file with an object whose current file is another one.
class Opening : public Scenario {
 public:
  explicit Opening(Bytes bytes) : m_bytes(std::move(bytes)) {}

  void Prepare(ILumidex& object) override {
    ASSERT_EQ(object.Open(m_before.Path()), S_OK);
    ASSERT_EQ(object.GetInfo17Size(&m_number), LMD_E_NOT_FOUND);
  }

  HRESULT Run(ILumidex& object) override { return object.Open(m_file.Path()); }

  // A file that was not parsed leaves the records of the one before.
  void Check(ILumidex& object, HRESULT result) override {
    EXPECT_EQ(m_file.Read(), m_bytes);
    if (result != LMD_E_SRC_NOT_FOUND && result != LMD_E_BAD_FORMAT) return;
    EXPECT_EQ(object.GetInfo16(&m_number), S_OK);
    EXPECT_EQ(m_number, 7U);
    EXPECT_EQ(object.GetInfo17Size(&m_number), LMD_E_NOT_FOUND);
  }

 private:
  const TempFile m_before{FullPhoto()};
  const Bytes m_bytes;
  const TempFile m_file{m_bytes};
  std::uint32_t m_number = 0;
};

// A result object that the caller owns, beside that of the object.
class BasicParse final : public Scenario {
 public:
  void Prepare(ILumidex& object) override { ASSERT_EQ(object.Open(m_before.Path()), S_OK); }
  HRESULT Run(ILumidex& object) override { return object.ParseBasic(m_file.Path(), &m_info); }

  void Check(ILumidex& object, HRESULT result) override {
    const Ref<IImageInfo> info(m_info);
    m_info = nullptr;
    EXPECT_EQ(m_file.Read(), m_bytes);
    if (result == S_OK) {
      ASSERT_NE(info.Get(), nullptr);
    }
    if (info.Get() != nullptr) {
      EXPECT_EQ(info->GetState(), 1);
    }
    std::uint32_t number = 0;
    EXPECT_EQ(object.GetInfo16(&number), S_OK);
    EXPECT_EQ(number, 7U);
  }

 private:
  const TempFile m_before{FullPhoto()};
  const Bytes m_bytes = RichPhoto();
  const TempFile m_file{m_bytes};
  IImageInfo* m_info = nullptr;
};

template <Bytes (*bytes)()>
std::unique_ptr<Scenario> Open() {
  return std::make_unique<Opening>(bytes());
}

// A file whose type cannot be told is of none; what cannot be read later is as good as not there.
// A file is read from its start without a seek.
const Outcomes kOpenJpeg = {
    {Call::Allocation, {S_OK, LMD_E_OUT_OF_MEMORY}},
    {Call::Attributes, {LMD_E_SRC_NOT_FOUND}},
    {Call::Open, {LMD_E_BAD_FORMAT, S_OK}},
    {Call::Read, {LMD_E_BAD_FORMAT, S_OK}},
    {Call::Seek, {S_OK}},
    {Call::Close, {S_OK}},
};

// All of it stands in the first window.
const Outcomes kParseBasic = [] {
  Outcomes outcomes = kOpenJpeg;
  outcomes.erase(Call::Seek);
  return outcomes;
}();

const Outcomes kOpenPng = {
    {Call::Attributes, {LMD_E_SRC_NOT_FOUND}},
    {Call::Open, {LMD_E_BAD_FORMAT}},
    {Call::Read, {LMD_E_BAD_FORMAT}},
    {Call::Close, {S_OK}},
};

// The answer is a type, not a code.
constexpr HRESULT kNoType = 0;
constexpr HRESULT kJpegType = 1;

const Outcomes kFileType = {
    {Call::Open, {kNoType}},
    {Call::Read, {kNoType}},
    {Call::Close, {kJpegType}},
};

const Operation kObjectOperations[] = {
    {"CreateInstance", S_OK, Make<Creation>, {{Call::Allocation, {S_OK, E_OUTOFMEMORY}}}},
    {"GetFileType", kJpegType, Make<FileTypeTest>, kFileType},
    {"OpenJpeg", S_OK, Open<DistantPhoto>, kOpenJpeg},
    {"OpenPng", S_OK, Open<PanoramaPng>, kOpenPng},
    {"ParseBasic", S_OK, Make<BasicParse>, kParseBasic},
};

}  // namespace

std::span<const Operation> ObjectOperations() {
  return kObjectOperations;
}

}  // namespace test
