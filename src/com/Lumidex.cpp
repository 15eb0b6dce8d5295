#include "com/Lumidex.h"

#include <algorithm>
#include <array>
#include <new>
#include <string_view>

#include "base/FileStream.h"
#include "base/Guarded.h"
#include "com/FilePaths.h"
#include "com/TrailerBlock.h"
#include "core/DebugLog.h"

namespace {

constexpr std::size_t kSignatureSize = 8;
using Signature = std::array<std::uint8_t, kSignatureSize>;

struct FileSignature {
  std::string_view bytes;
  FileType type;
};

// In the order in which they are tried.
// clang-format off
constexpr std::array kFileSignatures = {
    FileSignature{{"II\x2A\x00", 4},            FILETYPE_TIFF},
    FileSignature{{"MM\x00\x2A", 4},            FILETYPE_TIFF},
    FileSignature{{"\x89PNG\x0D\x0A\x1A\x0A", 8}, FILETYPE_PNG},
    FileSignature{{"\xFF\xD8", 2},              FILETYPE_JPEG},
};
// clang-format on

// The bytes alone decide: a file named like a JPEG is one when it begins like any other.
FileType TypeOf(const Signature& signature) {
  for (const FileSignature& known : kFileSignatures) {
    const auto matches = [](char expected, std::uint8_t byte) {
      return static_cast<std::uint8_t>(expected) == byte;
    };
    if (std::equal(known.bytes.begin(), known.bytes.end(), signature.begin(), matches)) {
      return known.type;
    }
  }
  return FILETYPE_UNKNOWN;
}

// Writes the block behind the file; on failure the file gets its old size back. An error that shows
// only on closing has closed the stream.
HRESULT WriteTrailer(FileStream& stream, const WCHAR* path, std::uint64_t size) {
  stream.Seek(size);
  if (stream.Write(kTrailerBlock) && stream.Flush() && stream.Close()) return S_OK;
  if (stream.IsOpen() || stream.Open(path, LMD_W("r+b"), kTrailerSize)) stream.Truncate(size);
  return LMD_E_WRITE_FAILED;
}

}  // namespace

INonDelegatingUnknown* CLumidex::CreateInstance(IUnknown* pUnkOuter, HRESULT* phr) {
  CLumidex* object = nullptr;
  try {
    object = new CLumidex(pUnkOuter);
  } catch (...) {
    object = nullptr;
  }
  if (phr != nullptr) *phr = object == nullptr ? E_OUTOFMEMORY : S_OK;
  return object;
}

// An object without a container lives; Open then reports it.
CLumidex::CLumidex(IUnknown* pUnkOuter) : ComObject(pUnkOuter) {
  SetDebugLogPrefix("[ImgCodec]");
  m_pContainer.reset(new (std::nothrow) CJpegContainer());
}

CLumidex::~CLumidex() {
  if (m_pImageInfo != nullptr) m_pImageInfo->Release();
}

HRESULT STDMETHODCALLTYPE CLumidex::NonDelegatingQueryInterface(REFIID riid, void** ppv) {
  if (ppv == nullptr) return E_POINTER;
  if (riid != IID_ILumidex) return CUnknown::NonDelegatingQueryInterface(riid, ppv);
  *ppv = static_cast<ILumidex*>(this);
  AddRef();
  return S_OK;
}

std::int32_t STDMETHODCALLTYPE CLumidex::GetFileType(const WCHAR* path) noexcept {
  const auto detect = [&]() -> HRESULT {
    FileStream stream;
    Signature signature;
    if (!stream.Open(path, LMD_W("rb"), kSignatureSize)) return FILETYPE_UNKNOWN;
    if (stream.Read(signature) < kSignatureSize) return FILETYPE_UNKNOWN;
    return static_cast<HRESULT>(TypeOf(signature));
  };
  const HRESULT type = Guarded(detect);
  return FAILED(type) ? static_cast<HRESULT>(FILETYPE_UNKNOWN) : type;
}

HRESULT STDMETHODCALLTYPE CLumidex::Open(const WCHAR* path) noexcept {
  if (path != nullptr && !IsUsableFile(path)) return LMD_E_SRC_NOT_FOUND;
  m_nFileType = static_cast<std::uint32_t>(static_cast<ILumidex*>(this)->GetFileType(path));
  if (m_nFileType != FILETYPE_JPEG && m_nFileType != FILETYPE_PNG) return LMD_E_BAD_FORMAT;
  if (m_pImageInfo != nullptr) m_pImageInfo->Release();
  m_pImageInfo = nullptr;

  HRESULT result = S_OK;
  if (m_nFileType == FILETYPE_JPEG) {
    if (!m_pContainer) return LMD_E_INVALID_ARG;
    result = m_pContainer->Parse(path, kOpenMask, &m_pImageInfo);
  }
  KeepPath(m_szSrcPath, path);
  return result;
}

HRESULT STDMETHODCALLTYPE CLumidex::ParseBasic(const WCHAR* path, IImageInfo** ppInfo) noexcept {
  if (ppInfo != nullptr) *ppInfo = nullptr;
  if (path != nullptr && !IsUsableFile(path)) return LMD_E_SRC_NOT_FOUND;
  m_nFileType = static_cast<std::uint32_t>(static_cast<ILumidex*>(this)->GetFileType(path));
  if (m_nFileType != FILETYPE_JPEG && m_nFileType != FILETYPE_PNG) return LMD_E_BAD_FORMAT;

  HRESULT result = S_OK;
  if (m_nFileType == FILETYPE_JPEG) {
    if (!m_pContainer) return LMD_E_INVALID_ARG;
    result = m_pContainer->Parse(path, kBasicMask, ppInfo);
  }
  KeepPath(m_szSrcPath, path);
  return result;
}

HRESULT STDMETHODCALLTYPE CLumidex::AppendTrailer(const WCHAR* path) noexcept {
  if (path != nullptr && !IsUsableFile(path)) return LMD_E_SRC_NOT_FOUND;
  const auto append = [&]() -> HRESULT {
    FileStream stream;
    if (!stream.Open(path, LMD_W("ab+"), kTrailerSize)) return LMD_E_OPEN_FAILED;
    const std::uint64_t size = stream.Size();
    if (size < kTrailerSize) return LMD_E_READ_FAILED;
    std::array<std::uint8_t, kTrailerSize> end;
    stream.Seek(size - kTrailerSize);
    if (stream.Read(end) < kTrailerSize) return LMD_E_READ_FAILED;
    if (end == kTrailerBlock) return LMD_E_ALREADY_MARKED;
    return WriteTrailer(stream, path, size);
  };
  return Guarded(append);
}
