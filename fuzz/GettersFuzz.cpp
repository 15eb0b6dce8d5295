// The getters of one object in any order, between any openings of files. Each call is compared with
// what the records of the same parse say.
//
// Input: how the photograph is made (1 byte), the number of steps (1), two bytes a step, the file
// itself or changes to a rich one, each an offset (2) and a byte.

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

#include <lumidex/ResultCodes.h>

#include "FuzzChecks.h"
#include "FuzzInput.h"
#include "FuzzObject.h"
#include "GetterModel.h"
#include "LocatorChecks.h"
#include "MemoryFiles.h"
#include "PacketModel.h"
#include "RichPhoto.h"
#include "container/ImageContainer.h"
#include "core/RecordExtractors.h"
#include "support/Png.h"

namespace {

using fuzz::FuzzObject;
using fuzz::GetterModel;
using fuzz::Info;
using fuzz::MemoryFiles;
using fuzz::Pose;
using fuzz::Require;
using fuzz::View;
using test::Bytes;

constexpr std::uint32_t kUntouched = 0xA5A5A5A5;
constexpr std::uint8_t kFill = 0xA5;

std::span<const CInfoRecord> RecordsOf(IImageInfo* info) {
  if (info == nullptr) return {};
  const CMETADATA_INFO_LIST* list = info->GetInfoList();
  return {list->m_pRecords, static_cast<std::size_t>(list->m_nCount)};
}

// The input's photograph, four that never change, and a path at which nothing exists. Each has the
// result of a parse beside that of the object under test; a PNG has none.
class Photos {
 public:
  static constexpr std::size_t kCount = 6;

  Photos() {
    for (const WCHAR*& path : m_paths) path = m_files.Add();
    Set(1, fuzz::RichPhoto());
    Set(2, test::Png().Header().Xmp("is equirectangular").End().Build());
    Set(3, test::Png().Header().End().Build());
    Set(4, {'I', 'I', 42, 0, 8, 0, 0, 0, 0, 0});
  }
  ~Photos() {
    for (std::size_t i = 0; i < kCount; ++i) Forget(i);
  }
  Photos(const Photos&) = delete;
  Photos& operator=(const Photos&) = delete;

  void Set(std::size_t index, const Bytes& bytes) {
    m_contents[index] = bytes;
    m_files.Put(m_paths[index], bytes);
    if (fuzz::TypeOfFile(bytes) != FILETYPE_JPEG) return;
    CJpegContainer container;
    Require(container.Parse(m_paths[index], kOpenMask, &m_results[index]) == S_OK,
            "a parse succeeds");
  }
  void Forget(std::size_t index) {
    if (m_results[index] != nullptr) m_results[index]->Release();
    m_results[index] = nullptr;
  }

  bool Exists(std::size_t index) const { return index + 1 < kCount; }
  const WCHAR* Path(std::size_t index) const { return m_paths[index]; }
  const Bytes& Contents(std::size_t index) const { return m_contents[index]; }
  IImageInfo* Result(std::size_t index) const { return m_results[index]; }

  void RequireUnchanged() const {
    Require(m_files.Get(m_paths[0]) == m_contents[0], "getters leave the file as it was");
  }

 private:
  MemoryFiles m_files;
  std::array<const WCHAR*, kCount> m_paths = {};
  std::array<Bytes, kCount> m_contents;
  std::array<IImageInfo*, kCount> m_results = {};
};

// Makes bytes the input's photograph while it lives.
class FirstPhoto {
 public:
  FirstPhoto(Photos& photos, const Bytes& bytes) : m_photos(photos) { m_photos.Set(0, bytes); }
  ~FirstPhoto() { m_photos.Forget(0); }
  FirstPhoto(const FirstPhoto&) = delete;
  FirstPhoto& operator=(const FirstPhoto&) = delete;

 private:
  Photos& m_photos;
};

// A buffer of exactly some bytes with a guard behind them.
class GuardedBuffer {
 public:
  explicit GuardedBuffer(std::size_t size) : m_bytes(size + kGuard, kFill) {}

  std::uint8_t* Data() { return m_bytes.data(); }

  // Whether it begins with the given bytes and nothing else was written.
  bool HoldsOnly(View bytes) const {
    const View all(m_bytes);
    return std::ranges::equal(all.first(bytes.size()), bytes) &&
           std::ranges::all_of(all.subspan(bytes.size()),
                               [](std::uint8_t b) { return b == kFill; });
  }

 private:
  static constexpr std::size_t kGuard = 32;

  std::vector<std::uint8_t> m_bytes;
};

using SizeMethod = HRESULT (STDMETHODCALLTYPE ILumidex::*)(std::uint32_t*);
using DataMethod = HRESULT (STDMETHODCALLTYPE ILumidex::*)(std::uint32_t*, std::uint8_t*);
using AngleMethod = HRESULT (STDMETHODCALLTYPE ILumidex::*)(float*);

struct InfoMethods {
  Info info;
  SizeMethod size;
  DataMethod data;
  bool dataServesPng;
};

// clang-format off
constexpr std::array kInfoMethods = {
    InfoMethods{Info::Number17, &ILumidex::GetInfo17Size, &ILumidex::GetInfo17Data, false},
    InfoMethods{Info::Number18, &ILumidex::GetInfo18Size, &ILumidex::GetInfo18Data, true},
    InfoMethods{Info::Number19, &ILumidex::GetInfo19Size, &ILumidex::GetInfo19Data, false},
    InfoMethods{Info::Number21, &ILumidex::GetInfo21Size, &ILumidex::GetInfo21Data, false},
};

struct AngleMethods {
  Pose pose;
  AngleMethod method;
};
constexpr std::array kAngleMethods = {
    AngleMethods{Pose::Heading, &ILumidex::GetPoseHeading},
    AngleMethods{Pose::Pitch,   &ILumidex::GetPosePitch},
    AngleMethods{Pose::Roll,    &ILumidex::GetPoseRoll},
};
// clang-format on

class Session {
 public:
  explicit Session(const Photos& photos) : m_photos(photos) {}

  void Step(std::uint8_t operation, std::uint8_t parameter) {
    using Operation = void (Session::*)(std::uint8_t);
    constexpr std::array<Operation, 11> kOperations = {
        &Session::Open,     &Session::ParseBasic, &Session::FileType, &Session::InfoSize,
        &Session::InfoData, &Session::Number16,   &Session::Triple17, &Session::Triple20,
        &Session::Angle,    &Session::Panorama,   &Session::Packet};
    // What is answered twice is the same, whatever was asked in between.
    const Operation chosen = kOperations[operation % kOperations.size()];
    (this->*chosen)(parameter);
    if (chosen != &Session::Open && chosen != &Session::ParseBasic) (this->*chosen)(parameter);
  }

 private:
  // The input's photograph every other time.
  static std::size_t PhotoOf(std::uint8_t parameter) {
    return parameter % 2 == 0 ? 0 : parameter / 2 % Photos::kCount;
  }

  GetterModel Model() const { return {m_type, m_result != nullptr, RecordsOf(m_result)}; }

  // The first two decisions of Open and ParseBasic.
  HRESULT Decide(std::size_t photo) {
    if (!m_photos.Exists(photo)) return LMD_E_SRC_NOT_FOUND;
    m_type = fuzz::TypeOfFile(m_photos.Contents(photo));
    return IsServed() ? S_OK : LMD_E_BAD_FORMAT;
  }
  bool IsServed() const { return m_type == FILETYPE_JPEG || m_type == FILETYPE_PNG; }

  void Open(std::uint8_t parameter) {
    const std::size_t photo = PhotoOf(parameter);
    const HRESULT expected = Decide(photo);
    Require(m_object->Open(m_photos.Path(photo)) == expected, "a file is opened or refused");
    if (FAILED(expected)) return;
    m_result = m_photos.Result(photo);
    m_current = photo;
    m_hasCurrent = true;
  }

  void ParseBasic(std::uint8_t parameter) {
    const std::size_t photo = PhotoOf(parameter);
    const HRESULT expected = Decide(photo);
    IImageInfo* info = nullptr;
    Require(m_object->ParseBasic(m_photos.Path(photo), &info) == expected,
            "a file is parsed or refused");
    Require((info != nullptr) == (SUCCEEDED(expected) && m_type == FILETYPE_JPEG),
            "a JPEG has a result");
    fuzz::RequireSoundRecords(RecordsOf(info), kBasicMask);
    if (info != nullptr) info->Release();
    if (FAILED(expected)) return;
    m_current = photo;
    m_hasCurrent = true;
  }

  // Asks without making the file current.
  void FileType(std::uint8_t parameter) {
    const std::size_t photo = PhotoOf(parameter);
    const std::uint32_t type =
        m_photos.Exists(photo) ? fuzz::TypeOfFile(m_photos.Contents(photo)) : FILETYPE_UNKNOWN;
    Require(m_object->GetFileType(m_photos.Path(photo)) == static_cast<std::int32_t>(type),
            "the first bytes tell the type");
  }

  void InfoSize(std::uint8_t parameter) {
    const InfoMethods& methods = kInfoMethods[parameter % kInfoMethods.size()];
    const auto found = Model().FindInfo(methods.info);
    std::uint32_t size = kUntouched;
    Require((*m_object.*methods.size)(&size) == found.result, "a size is told or refused");
    Require(size == (FAILED(found.result) ? kUntouched : found.bytes.size()),
            "the size is that of the record");
    const HRESULT withNull = m_type == FILETYPE_PNG ? LMD_E_NOT_FOUND : LMD_E_INVALID_ARG;
    Require((*m_object.*methods.size)(nullptr) == withNull, "a null pointer is refused");
  }

  void InfoData(std::uint8_t parameter) {
    const InfoMethods& methods = kInfoMethods[parameter % kInfoMethods.size()];
    const auto found = Model().FindInfo(methods.info, methods.dataServesPng);
    const auto size = static_cast<std::uint32_t>(found.bytes.size());
    const std::array<std::uint32_t, 7> capacities = {size,     0,    1,         size - 1,
                                                     size + 1, 4096, 0xFFFFFFFF};
    const std::uint32_t capacity = capacities[parameter / 4 % capacities.size()];
    const bool fits = capacity >= size;
    // A host's buffer holds what it says, and no record is larger than the two that say more.
    GuardedBuffer buffer(std::min<std::size_t>(capacity, std::max<std::size_t>(size, 4096)));
    const HRESULT expected =
        SUCCEEDED(found.result) && !fits ? LMD_E_BUFFER_TOO_SMALL : found.result;

    std::uint32_t told = capacity;
    Require((*m_object.*methods.data)(&told, buffer.Data()) == expected,
            "data are told or refused");
    Require(told == (SUCCEEDED(expected) ? size : capacity), "the size is that of the data");
    Require(buffer.HoldsOnly(SUCCEEDED(expected) ? found.bytes : View{}),
            "the buffer gets the record and nothing more");

    const bool isRefusedPng = m_type == FILETYPE_PNG && !methods.dataServesPng;
    const HRESULT withNull = isRefusedPng ? LMD_E_NOT_FOUND : LMD_E_INVALID_ARG;
    told = capacity;
    Require((*m_object.*methods.data)(&told, nullptr) == withNull && told == capacity &&
                (*m_object.*methods.data)(nullptr, buffer.Data()) == withNull,
            "a null pointer is refused");
  }

  void Number16(std::uint8_t) {
    const auto found = Model().FindInfo(Info::Number16);
    std::uint32_t expected = kUntouched;
    if (SUCCEEDED(found.result)) {
      // A record that is shorter is filled up with zeros.
      expected = 0;
      for (std::size_t i = std::min<std::size_t>(found.bytes.size(), 4); i > 0; --i) {
        expected = expected << 8 | found.bytes[i - 1];
      }
    }
    std::uint32_t value = kUntouched;
    Require(m_object->GetInfo16(&value) == found.result, "a number is told or refused");
    Require(value == expected, "the number is that of the record");
  }

  void Triple17(std::uint8_t parameter) {
    constexpr double kNothing = -1234.5;
    std::array<double, 3> expected = {kNothing, kNothing, kNothing};
    std::array<double, 3> values = expected;
    const HRESULT result = Model().Triple17(&expected);
    Require(m_object->GetInfo17Triple(&values[0], &values[1], &values[2]) == result,
            "quotients are told or refused");
    Require(values == expected, "the quotients are those of the record");
    std::array<double*, 3> pointers = {&values[0], &values[1], &values[2]};
    pointers[parameter % 3] = nullptr;
    Require(m_object->GetInfo17Triple(pointers[0], pointers[1], pointers[2]) == WithNull(),
            "a null pointer is refused");
    Require(values == expected, "a refusal leaves the others alone");
  }

  void Triple20(std::uint8_t parameter) {
    std::array<std::uint32_t, 3> expected = {kUntouched, kUntouched, kUntouched};
    std::array<std::uint32_t, 3> values = expected;
    const auto found = Model().FindTriple(Info::Number20, sizeof(expected));
    if (SUCCEEDED(found.result)) std::memcpy(expected.data(), found.bytes.data(), sizeof(expected));
    Require(m_object->GetInfo20Triple(&values[0], &values[1], &values[2]) == found.result,
            "words are told or refused");
    Require(values == expected, "the words are those of the record");
    std::array<std::uint32_t*, 3> pointers = {&values[0], &values[1], &values[2]};
    pointers[parameter % 3] = nullptr;
    Require(m_object->GetInfo20Triple(pointers[0], pointers[1], pointers[2]) == WithNull(),
            "a null pointer is refused");
    Require(values == expected, "a refusal leaves the others alone");
  }

  HRESULT WithNull() const { return m_type == FILETYPE_PNG ? LMD_E_NOT_FOUND : LMD_E_INVALID_ARG; }

  void Angle(std::uint8_t parameter) {
    const auto& [pose, method] = kAngleMethods[parameter % kAngleMethods.size()];
    float expected = -1234.5F;
    float value = expected;
    const HRESULT result = Model().PoseAngle(pose, &expected);
    Require((*m_object.*method)(&value) == result, "an angle is told or refused");
    Require(std::bit_cast<std::uint32_t>(value) == std::bit_cast<std::uint32_t>(expected),
            "the angle is the number of the record's text");
    Require((*m_object.*method)(nullptr) == LMD_E_INVALID_ARG, "a null pointer is refused");
  }

  void Panorama(std::uint8_t) {
    std::uint32_t flag = kUntouched;
    const HRESULT expected = ExpectedPanorama();
    const bool isPng = m_type == FILETYPE_PNG;
    const bool marked = isPng ? CurrentPlace().result == LMD_E_XMP_FOUND : expected == S_OK;
    Require(m_object->IsPanorama(&flag) == expected, "a panorama is told or refused");
    Require(flag == (marked ? 1U : 0U), "the flag is that of the file");
    Require(m_object->IsPanorama(nullptr) == LMD_E_INVALID_ARG, "a null pointer is refused");
  }

  // The current file may be of another type than the one that was looked at last.
  fuzz::Place CurrentPlace() const {
    const Bytes& file = m_photos.Contents(m_current);
    return m_type == FILETYPE_PNG ? fuzz::PlaceOfPngXmp(file) : fuzz::PlaceOfJpegXmp(file);
  }

  HRESULT ExpectedPanorama() const {
    if (m_type == FILETYPE_PNG) {
      const HRESULT located = CurrentPlace().result;
      return located == LMD_E_XMP_FOUND ? S_OK : located;
    }
    if (m_type != FILETYPE_JPEG) return LMD_E_NOT_FOUND;
    const HRESULT byRecords = Model().PanoramaByRecords();
    if (byRecords != S_FALSE) return byRecords;
    return CurrentPlace().result == LMD_E_XMP_FOUND ? LMD_E_NOT_PANORAMA : LMD_E_NOT_FOUND;
  }

  void Packet(std::uint8_t) {
    std::uint32_t size = kUntouched;
    std::uint8_t byte = kFill;
    if (m_hasCurrent) {
      fuzz::RequirePacket(m_object, m_photos.Contents(m_current), m_type);
    } else {
      Require(m_object->GetXmpPacketSize(&size) == LMD_E_INVALID_ARG, "there is no file");
      Require(m_object->GetXmpPacket(&size, &byte) == LMD_E_INVALID_ARG, "there is no file");
    }
    size = kUntouched;
    Require(m_object->GetXmpPacketSize(nullptr) == LMD_E_INVALID_ARG &&
                m_object->GetXmpPacket(nullptr, &byte) == LMD_E_INVALID_ARG &&
                m_object->GetXmpPacket(&size, nullptr) == LMD_E_INVALID_ARG,
            "a null pointer is refused");
    Require(size == kUntouched && byte == kFill, "a refusal leaves the others alone");
  }

  const Photos& m_photos;
  FuzzObject m_object;
  IImageInfo* m_result = nullptr;  // the photographs'
  std::uint32_t m_type = FILETYPE_UNKNOWN;
  std::size_t m_current = 0;
  bool m_hasCurrent = false;
};

// A file of the input's own, or the rich photograph with some bytes changed.
Bytes PhotoOf(std::uint8_t kind, fuzz::FuzzInput& input) {
  if (kind % 2 == 0) {
    const View file = input.TakeRest();
    return {file.begin(), file.end()};
  }
  static const Bytes rich = fuzz::RichPhoto();
  Bytes photo = rich;
  for (View change = input.Take(3); change.size() == 3; change = input.Take(3)) {
    const std::size_t offset = LoadU16(change, ByteOrder::LittleEndian);
    photo[offset % photo.size()] = change[2];
  }
  return photo;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::uint8_t kMaxSteps = 32;
  static Photos photos;

  const fuzz::RunChecks checks;
  fuzz::FuzzInput input(data, size);
  const std::uint8_t kind = input.TakeU8();
  const View steps = input.Take(2 * (input.TakeU8() % (kMaxSteps + 1U)));
  const FirstPhoto first(photos, PhotoOf(kind, input));
  Session session(photos);
  for (std::size_t i = 0; i + 1 < steps.size(); i += 2) session.Step(steps[i], steps[i + 1]);
  photos.RequireUnchanged();
  return 0;
}
