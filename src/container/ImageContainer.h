#ifndef LUMIDEX_CONTAINER_IMAGECONTAINER_H_
#define LUMIDEX_CONTAINER_IMAGECONTAINER_H_

// Between the object and the parse driver: makes the result object of a parse and runs the driver
// on it. Results of earlier parses stay valid for whoever holds them.

#include <cstdint>
#include <memory>

#include <lumidex/ImageInfo.h>

#include "core/VxMetadataWrapper.h"
#include "platform/Win32.h"

class CImageContainerBase {
 public:
  explicit CImageContainerBase(std::uint32_t containerType) noexcept
      : m_nContainerType(containerType) {}
  virtual ~CImageContainerBase() = default;
  CImageContainerBase(const CImageContainerBase&) = delete;
  CImageContainerBase& operator=(const CImageContainerBase&) = delete;

  // Parses a file for the categories of `mask`. *ppInfo gets a result object with one reference
  // that the caller owns, also when the parse finds nothing or fails. E_POINTER for a null ppInfo;
  // LMD_E_OUT_OF_MEMORY.
  virtual HRESULT Parse(const WCHAR* path, std::uint32_t mask, IImageInfo** ppInfo) = 0;

 protected:
  std::uint32_t m_nContainerType;
  std::unique_ptr<VxMetadataWrapper> m_pWrapper;  // made by the first parse, used by all
};

class CJpegContainer final : public CImageContainerBase {
 public:
  CJpegContainer() noexcept : CImageContainerBase(FILETYPE_JPEG) {}

  HRESULT Parse(const WCHAR* path, std::uint32_t mask, IImageInfo** ppInfo) override;
};

#endif  // LUMIDEX_CONTAINER_IMAGECONTAINER_H_
