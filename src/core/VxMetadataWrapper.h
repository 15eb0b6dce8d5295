#ifndef LUMIDEX_CORE_VXMETADATAWRAPPER_H_
#define LUMIDEX_CORE_VXMETADATAWRAPPER_H_

// The parse driver: one file into a fresh store, and the store's values into result records. It
// keeps nothing between parses.

#include <cstdint>

#include <lumidex/ImageInfo.h>

#include "core/RecordExtractors.h"
#include "exif/VxMetadata.h"
#include "platform/Win32.h"

// The file types that detection tells apart.
enum FileType : std::uint32_t {
  FILETYPE_UNKNOWN = 0,
  FILETYPE_JPEG = 1,
  FILETYPE_TIFF = 2,
  FILETYPE_PNG = 5,
};

class VxMetadataWrapper {
 public:
  virtual ~VxMetadataWrapper() = default;

  // Parses a file into the list of `pInfo`. LMD_E_OUT_OF_MEMORY; else S_OK, also when the file
  // cannot be opened.
  HRESULT Parse(const WCHAR* path, std::uint32_t kind, std::uint32_t mask, IImageInfo* pInfo);

  // The first step of a parse, before ExtractRecords: reads a file into a store. Only a JPEG has a
  // reader; after it runs the merge, unless the mask has PARSE_NO_MERGE.
  static void Read(VxMetadata& store, const WCHAR* path, std::uint32_t kind, std::uint32_t mask);

 private:
  std::uint32_t m_nOption = 0;
};

#endif  // LUMIDEX_CORE_VXMETADATAWRAPPER_H_
