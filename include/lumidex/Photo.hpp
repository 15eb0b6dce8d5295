#ifndef LUMIDEX_PHOTO_HPP_
#define LUMIDEX_PHOTO_HPP_

// The loaded module and a photograph opened with it. C++17.

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "ILumidex.h"
#include "Records.hpp"

#if defined(_WIN32)
#include <objbase.h>
#else
#include <dlfcn.h>
#endif

namespace lumidex {

// The name of a result code, "HRESULT" for one that is not known here.
inline const char* NameOf(HRESULT result) {
#define LMD_CASE(name, value, meaning) \
  case static_cast<HRESULT>(value):    \
    return #name;
  switch (result) { LMD_RESULT_CODES(LMD_CASE) LMD_SYSTEM_CODES(LMD_CASE) }
#undef LMD_CASE
  return "HRESULT";
}

// What a result code means.
inline const char* MeaningOf(HRESULT result) {
#define LMD_CASE(name, value, meaning) \
  case static_cast<HRESULT>(value):    \
    return meaning;
  switch (result) { LMD_RESULT_CODES(LMD_CASE) LMD_SYSTEM_CODES(LMD_CASE) }
#undef LMD_CASE
  return "a result code of the system";
}

// A call that failed: "operation: NAME (0x8004C001): meaning".
class Error : public std::runtime_error {
 public:
  Error(const std::string& operation, HRESULT code)
      : std::runtime_error(operation + ": " + NameOf(code) + " (" + Number(code) +
                           "): " + MeaningOf(code)),
        m_code(code) {}

  HRESULT Code() const noexcept { return m_code; }
  const char* Name() const noexcept { return NameOf(m_code); }

 private:
  static std::string Number(HRESULT code) {
    std::string text = "0x";
    for (int shift = 28; shift >= 0; shift -= 4) {
      text += "0123456789ABCDEF"[static_cast<std::uint32_t>(code) >> shift & 0xF];
    }
    return text;
  }

  HRESULT m_code;
};

namespace detail {

inline void Require(HRESULT result, const char* operation) {
  if (FAILED(result)) throw Error(operation, result);
}

// Whether a value is there; an error when it cannot be told. A PNG has no parse result, which some
// getters tell as a wrong argument.
inline bool IsPresent(HRESULT result, const char* operation) {
  if (result == LMD_E_NOT_FOUND || result == LMD_E_INVALID_ARG) return false;
  Require(result, operation);
  return true;
}

// One reference to an object of the module.
template <class Interface>
class Ref {
 public:
  Ref() = default;
  Ref(Ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  Ref& operator=(Ref&& other) noexcept {
    Ref old(std::move(other));
    std::swap(m_object, old.m_object);
    return *this;
  }
  ~Ref() {
    if (m_object != nullptr) m_object->Release();
  }

  Interface* operator->() const { return m_object; }
  Interface& operator*() const { return *m_object; }
  explicit operator bool() const { return m_object != nullptr; }
  Interface** Out() { return &m_object; }
  void** OutVoid() { return reinterpret_cast<void**>(&m_object); }

 private:
  Interface* m_object = nullptr;
};

using WideText = std::basic_string<WCHAR>;

inline WideText WideOf(const std::filesystem::path& path) {
  return path.string<WCHAR>();
}
inline std::string Utf8Of(const std::filesystem::path& path) {
  const auto text = path.u8string();
  return std::string(text.begin(), text.end());
}

// A loaded file with code, unloaded with the last copy of its handle.
using Library = std::shared_ptr<void>;
using Function = void (*)();

#if defined(_WIN32)
inline Library LoadLibraryFile(const std::filesystem::path& path) {
  // With a whole path, so that what the library needs is looked for beside it.
  const std::filesystem::path whole = std::filesystem::absolute(path);
  HMODULE module = LoadLibraryExW(whole.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (module == nullptr) {
    const DWORD code = GetLastError();
    throw Error("loading " + Utf8Of(path), HRESULT_FROM_WIN32(code));
  }
  return Library(module, [](void* handle) { FreeLibrary(static_cast<HMODULE>(handle)); });
}
inline Function FunctionOf(const Library& library, const char* name) {
  return reinterpret_cast<Function>(GetProcAddress(static_cast<HMODULE>(library.get()), name));
}
#else
inline Library LoadLibraryFile(const std::filesystem::path& path) {
  void* handle = dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) throw Error(std::string("loading ") + dlerror(), LMD_E_OPEN_FAILED);
  return Library(handle, [](void* module) { dlclose(module); });
}
inline Function FunctionOf(const Library& library, const char* name) {
  return reinterpret_cast<Function>(dlsym(library.get(), name));
}
#endif

inline Ref<ILumidex> CreateFrom(const Library& library) {
  const auto entry = reinterpret_cast<LPFNGETCLASSOBJECT>(FunctionOf(library, "DllGetClassObject"));
  if (entry == nullptr) throw Error("DllGetClassObject", CLASS_E_CLASSNOTAVAILABLE);
  Ref<IClassFactory> factory;
  Require(entry(CLSID_Lumidex, IID_IClassFactory, factory.OutVoid()), "DllGetClassObject");
  Ref<ILumidex> object;
  Require(factory->CreateInstance(nullptr, IID_ILumidex, object.OutVoid()), "CreateInstance");
  return object;
}

}  // namespace detail

enum class FileType : std::int32_t {
  Unknown = LMD_FILE_UNKNOWN,
  Jpeg = LMD_FILE_JPEG,
  Tiff = LMD_FILE_TIFF,
  Png = LMD_FILE_PNG,
};

// Degrees, each when the file has it.
struct Pose {
  std::optional<float> heading;
  std::optional<float> pitch;
  std::optional<float> roll;
};

// A JPEG or PNG that was opened. Its values are those of that moment, but for the packet and the
// records, which are read from the file when they are asked for. One thread at a time; it may be
// moved to another thread. The module stays loaded for as long as it lives.
class Photo {
 public:
  Photo(Photo&& other) noexcept = default;

  // By exchange: each object stays with its library.
  Photo& operator=(Photo&& other) noexcept {
    std::swap(m_library, other.m_library);
    std::swap(m_object, other.m_object);
    std::swap(m_path, other.m_path);
    std::swap(m_type, other.m_type);
    return *this;
  }

  FileType Type() const { return m_type; }
  const std::filesystem::path& Path() const { return m_path; }

  // Whether the file is marked as a panorama by its XMP.
  bool IsPanorama() const {
    std::uint32_t flag = 0;
    const HRESULT result = m_object->IsPanorama(&flag);
    if (result == LMD_E_NOT_PANORAMA) return false;
    return detail::IsPresent(result, "IsPanorama") && flag != 0;
  }

  lumidex::Pose Pose() const {
    return {Angle(&ILumidex::GetPoseHeading, "GetPoseHeading"),
            Angle(&ILumidex::GetPosePitch, "GetPosePitch"),
            Angle(&ILumidex::GetPoseRoll, "GetPoseRoll")};
  }

  // Maker-note tags 0x0010 to 0x0015 by the numbers of the interface.
  std::optional<std::uint32_t> Info16() const {
    std::uint32_t value = 0;
    if (!detail::IsPresent(m_object->GetInfo16(&value), "GetInfo16")) return std::nullopt;
    return value;
  }
  std::optional<std::vector<SignedRational>> Info17() const {
    const auto bytes = Data(&ILumidex::GetInfo17Size, &ILumidex::GetInfo17Data, "GetInfo17Data");
    if (!bytes) return std::nullopt;
    std::vector<SignedRational> values(bytes->size() / sizeof(SignedRational));
    if (!values.empty()) {
      std::memcpy(values.data(), bytes->data(), values.size() * sizeof(SignedRational));
    }
    return values;
  }
  // An error, E_FAIL, when a denominator is 0; Info17 has that value as well.
  std::optional<std::array<double, 3>> Info17Triple() const {
    std::array<double, 3> triple{};
    const HRESULT result = m_object->GetInfo17Triple(&triple[0], &triple[1], &triple[2]);
    if (!detail::IsPresent(result, "GetInfo17Triple")) return std::nullopt;
    return triple;
  }
  std::optional<Bytes> Info18() const {
    return Data(&ILumidex::GetInfo18Size, &ILumidex::GetInfo18Data, "GetInfo18Data");
  }
  std::optional<Bytes> Info19() const {
    return Data(&ILumidex::GetInfo19Size, &ILumidex::GetInfo19Data, "GetInfo19Data");
  }
  std::optional<std::array<std::uint32_t, 3>> Info20() const {
    std::array<std::uint32_t, 3> triple{};
    const HRESULT result = m_object->GetInfo20Triple(&triple[0], &triple[1], &triple[2]);
    if (!detail::IsPresent(result, "GetInfo20Triple")) return std::nullopt;
    return triple;
  }
  std::optional<Bytes> Info21() const {
    return Data(&ILumidex::GetInfo21Size, &ILumidex::GetInfo21Data, "GetInfo21Data");
  }

  // The records of the groups LMD_GROUP_BASICS, _IFD0, _EXIF and _GPS; none for a PNG.
  std::vector<Record> Records() const {
    detail::Ref<IImageInfo> info;
    detail::Require(m_object->ParseBasic(detail::WideOf(m_path).c_str(), info.Out()), "ParseBasic");
    return info ? detail::RecordsOf(info->GetInfoList()) : std::vector<Record>();
  }

  // The XMP packet where the module puts one, byte for byte.
  std::optional<std::string> XmpPacket() const {
    for (;;) {
      std::uint32_t size = 0;
      const HRESULT sized = m_object->GetXmpPacketSize(&size);
      if (!detail::IsPresent(sized, "GetXmpPacketSize")) return std::nullopt;
      // A damaged file may tell of more than it has.
      std::error_code error;
      const std::uintmax_t fileSize = std::filesystem::file_size(m_path, error);
      if (error || size > fileSize) throw Error("XmpPacket", LMD_E_READ_FAILED);
      // A segment of a JPEG has less than 64 KiB, whatever becomes of the file until it is read.
      Bytes buffer(size > kLargestSegment ? size : kLargestSegment);
      const HRESULT result = m_object->GetXmpPacket(&size, buffer.data());
      if (result == LMD_E_BUFFER_TOO_SMALL) continue;  // it has grown since
      if (!detail::IsPresent(result, "GetXmpPacket")) return std::nullopt;
      // For a JPEG the module tells 2 more than the packet has.
      if (m_type == FileType::Jpeg) size -= 2;
      return std::string(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(size));
    }
  }

 private:
  friend class Module;

  static constexpr std::uint32_t kLargestSegment = 0x10000;

  using Float = HRESULT (STDMETHODCALLTYPE ILumidex::*)(float*);
  using Size = HRESULT (STDMETHODCALLTYPE ILumidex::*)(std::uint32_t*);
  using Buffer = HRESULT (STDMETHODCALLTYPE ILumidex::*)(std::uint32_t*, std::uint8_t*);

  Photo(detail::Library library, detail::Ref<ILumidex> object, std::filesystem::path path)
      : m_library(std::move(library)), m_object(std::move(object)), m_path(std::move(path)) {
    const detail::WideText wide = detail::WideOf(m_path);
    detail::Require(m_object->Open(wide.c_str()), "Open");
    m_type = static_cast<FileType>(m_object->GetFileType(wide.c_str()));
  }

  std::optional<float> Angle(Float getter, const char* name) const {
    float value = 0;
    if (!detail::IsPresent(((*m_object).*getter)(&value), name)) return std::nullopt;
    return value;
  }

  std::optional<Bytes> Data(Size sizeOf, Buffer read, const char* name) const {
    std::uint32_t size = 0;
    if (!detail::IsPresent(((*m_object).*sizeOf)(&size), name)) return std::nullopt;
    Bytes bytes(size == 0 ? 1 : size);
    if (!detail::IsPresent(((*m_object).*read)(&size, bytes.data()), name)) return std::nullopt;
    bytes.resize(size);
    return bytes;
  }

  detail::Library m_library;  // before the object, so that it is unloaded after it
  detail::Ref<ILumidex> m_object;
  std::filesystem::path m_path;
  FileType m_type = FileType::Unknown;
};

// Where photographs are opened with. A copy is the same module; it may be used on any thread.
class Module {
 public:
  // The module of a file, without registration. A relative path counts from the current folder,
  // not from the program's.
  static Module Load(const std::filesystem::path& path) {
    return Module(detail::LoadLibraryFile(path));
  }

#if defined(_WIN32)
  // The module that the system knows for the class, by a manifest or the registry. The calling
  // thread has entered an apartment (CoInitializeEx), as has each thread that opens a photograph.
  static Module Activate() {
    Module module(nullptr);
    module.Create();
    return module;
  }
#endif

  // What the first 8 bytes of a file say.
  FileType TypeOf(const std::filesystem::path& path) const {
    return static_cast<FileType>(Create()->GetFileType(detail::WideOf(path).c_str()));
  }

  Photo Open(const std::filesystem::path& path) const {
    return Photo(m_library, Create(), path);
  }

  // A new object behind the bare interface; it must not outlive the module.
  detail::Ref<ILumidex> Create() const {
#if defined(_WIN32)
    if (!m_library) {
      detail::Ref<ILumidex> object;
      const HRESULT result = CoCreateInstance(CLSID_Lumidex, nullptr, CLSCTX_INPROC_SERVER,
                                              IID_ILumidex, object.OutVoid());
      detail::Require(result, "CoCreateInstance");
      return object;
    }
#endif
    return detail::CreateFrom(m_library);
  }

 private:
  explicit Module(detail::Library library) : m_library(std::move(library)) {}

  detail::Library m_library;
};

}  // namespace lumidex

#endif  // LUMIDEX_PHOTO_HPP_
