#include "com/Lumidex.h"

#include <array>
#include <new>

#include "base/FileStream.h"
#include "base/Guarded.h"
#include "com/FilePaths.h"
#include "com/FileTypes.h"
#include "com/TrailerBlock.h"
#include "core/DebugLog.h"

namespace {

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
    if (!stream.Open(path, LMD_W("rb"), kTypeBytes)) return FILETYPE_UNKNOWN;
    return static_cast<HRESULT>(TypeOf(path, stream.ReadBlock(kTypeBytes)));
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
