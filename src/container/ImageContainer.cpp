#include "container/ImageContainer.h"

#include <utility>

#include <lumidex/ResultCodes.h>

#include "base/Guarded.h"
#include "container/ImageInfo.h"

HRESULT CJpegContainer::Parse(const WCHAR* path, std::uint32_t mask, IImageInfo** ppInfo) {
  if (ppInfo == nullptr) return E_POINTER;
  *ppInfo = nullptr;
  const auto parse = [&] {
    auto info = std::make_unique<CImageInfo>(std::make_unique<OwnedRecordList>());
    info->AddRef();
    *ppInfo = info.release();
    if (!m_pWrapper) m_pWrapper = std::make_unique<VxMetadataWrapper>();
    return m_pWrapper->Parse(path, m_nContainerType, mask, *ppInfo);
  };
  return Guarded(parse, LMD_E_OUT_OF_MEMORY);
}
