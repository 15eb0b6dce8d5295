// The writing methods of the interface are declared by it and not available in this version.

#include "com/Lumidex.h"

HRESULT STDMETHODCALLTYPE CLumidex::EmbedXmpFile(const WCHAR*, const WCHAR*,
                                                 const WCHAR*) noexcept {
  return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE CLumidex::WriteMetadata(const WCHAR*, const WCHAR*, std::uint32_t,
                                                  const CInfoRecord*, std::uint32_t, std::uint64_t,
                                                  const WCHAR*, std::uint32_t) noexcept {
  return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE CLumidex::GetXmpPacketSize(std::uint32_t*) noexcept {
  return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE CLumidex::GetXmpPacket(std::uint32_t*, std::uint8_t*) noexcept {
  return E_NOTIMPL;
}
