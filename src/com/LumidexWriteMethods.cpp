// The methods that write files, and those that read the raw packet back. What paths and arguments
// allow is decided here, in the documented order; what the files' contents allow is decided in the
// container.

#include <limits>

#include <lumidex/ResultCodes.h>

#include "base/FileIdentity.h"
#include "base/Guarded.h"
#include "com/FilePaths.h"
#include "com/FileTypes.h"
#include "com/Lumidex.h"
#include "container/FileCopy.h"
#include "container/MetadataRewrite.h"
#include "container/XmpEmbedding.h"
#include "container/XmpPacketReader.h"

// Opens a source and takes its type, which is unknown when it cannot be read. What is then written
// comes from the same stream, and so from the file that has this type.
HRESULT CLumidex::OpenSource(FileStream& source, const WCHAR* path) noexcept {
  m_nFileType = FILETYPE_UNKNOWN;
  return Guarded([&] {
    if (OpenForCopy(source, path, LMD_W("rb"))) {
      source.Seek(0);
      m_nFileType = TypeOf(path, source.TakeFromWindow(kTypeBytes));
    }
    return S_OK;
  });
}

void CLumidex::KeepPaths(const WCHAR* src, const WCHAR* dst, const WCHAR* xmp) {
  KeepPath(m_szSrcPath, src);
  KeepPath(m_szDstPath, dst);
  KeepPath(m_szXmpPath, xmp);
}

HRESULT STDMETHODCALLTYPE CLumidex::EmbedXmpFile(const WCHAR* src, const WCHAR* dst,
                                                 const WCHAR* xmp) noexcept {
  if (src != nullptr && !IsUsableFile(src)) return LMD_E_SRC_NOT_FOUND;
  if (xmp != nullptr && !IsUsableFile(xmp)) return LMD_E_SRC_NOT_FOUND;
  FileStream source;
  const HRESULT opened = OpenSource(source, src);
  if (FAILED(opened)) return opened;
  const bool isPng = m_nFileType == FILETYPE_PNG;
  if (!isPng && m_nFileType != FILETYPE_JPEG) return LMD_E_BAD_FORMAT;

  // By design only the very same text means the file itself; another spelling of it is refused.
  const bool inPlace = isPng && dst != nullptr && WideStringView(dst) == src;
  if (inPlace ? IsSameFile(dst, {xmp}) : !IsFree(dst, {src, xmp})) return LMD_E_DST_EXISTS;
  KeepPaths(src, dst, xmp);
  return Guarded([&] {
    if (inPlace) {
      static_cast<void>(source.Close());
      return EmbedIntoSamePng(src, xmp);
    }
    return isPng ? EmbedIntoPng(source, dst, xmp) : EmbedIntoJpeg(source, dst, xmp);
  });
}

HRESULT STDMETHODCALLTYPE CLumidex::WriteMetadata(const WCHAR* src, const WCHAR* dst,
                                                  std::uint32_t count, const CInfoRecord* items,
                                                  std::uint32_t opt32, std::uint64_t opt64,
                                                  const WCHAR* xmp,
                                                  std::uint32_t overwrite) noexcept {
  if (src == nullptr || !IsUsableFile(src)) return LMD_E_SRC_NOT_FOUND;
  FileStream source;
  const HRESULT opened = OpenSource(source, src);
  if (FAILED(opened)) return opened;
  if (m_nFileType != FILETYPE_JPEG) return LMD_E_BAD_FORMAT;
  const bool mayWrite = overwrite == 0 ? IsFree(dst, {src, xmp}) : !IsSameFile(dst, {src, xmp});
  if (!mayWrite) return LMD_E_DST_EXISTS;
  if (items != nullptr ? count == 0 : xmp == nullptr) return LMD_E_INVALID_ARG;
  if (xmp != nullptr && !IsUsableFile(xmp)) return LMD_E_SRC_NOT_FOUND;
  KeepPaths(src, dst, xmp);

  RewriteRequest request;
  request.source = &source;
  request.output = dst;
  request.packet = xmp;
  request.records = items;
  request.recordCount = count;
  request.thumbnail = reinterpret_cast<const std::uint8_t*>(static_cast<std::uintptr_t>(opt64));
  request.thumbnailLength = opt32;
  request.writerOption = m_nWriterOption;
  request.overwrite = overwrite != 0;
  return Guarded([&] { return RewriteMetadata(request); });
}

HRESULT STDMETHODCALLTYPE CLumidex::GetXmpPacketSize(std::uint32_t* pSize) noexcept {
  if (m_szSrcPath[0] == 0 || pSize == nullptr) return LMD_E_INVALID_ARG;
  const HRESULT result =
      Guarded([&] { return ReadXmpPacketSize(m_szSrcPath, m_nFileType, pSize); });
  if (FAILED(result)) return result;
  KeepPath(m_szPacketPath, m_szSrcPath);
  m_nPacketSize = *pSize;
  return S_OK;
}

// What the host knows its buffer to need: the file may have changed since it was told. Without an
// answer about this file nothing is known of the buffer.
std::uint32_t CLumidex::PacketRoom() const {
  constexpr std::uint32_t kUnknown = std::numeric_limits<std::uint32_t>::max();
  return WideStringView(m_szPacketPath) == m_szSrcPath ? m_nPacketSize : kUnknown;
}

HRESULT STDMETHODCALLTYPE CLumidex::GetXmpPacket(std::uint32_t* pSize,
                                                 std::uint8_t* pBuffer) noexcept {
  if (m_szSrcPath[0] == 0 || pSize == nullptr || pBuffer == nullptr) return LMD_E_INVALID_ARG;
  return Guarded(
      [&] { return ReadXmpPacket(m_szSrcPath, m_nFileType, pSize, pBuffer, PacketRoom()); });
}
