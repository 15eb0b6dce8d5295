#ifndef LUMIDEX_CONTAINER_IMAGEINFO_H_
#define LUMIDEX_CONTAINER_IMAGEINFO_H_

#include <memory>

#include <lumidex/ImageInfo.h>

#include "base/OwnedRecords.h"
#include "com/Unknown.h"

// A parse result behind a reference count. Never aggregated.
class CImageInfo final : public ComObject<IImageInfo> {
 public:
  explicit CImageInfo(std::unique_ptr<OwnedRecordList> list) noexcept
      : ComObject(nullptr), m_pList(std::move(list)) {}

  std::int32_t STDMETHODCALLTYPE GetState() override {
    return m_pList ? static_cast<std::int32_t>(m_pList->m_nState) : 0;
  }
  CMETADATA_INFO_LIST* STDMETHODCALLTYPE GetInfoList() override { return m_pList.get(); }

 private:
  std::unique_ptr<OwnedRecordList> m_pList;
};

#endif  // LUMIDEX_CONTAINER_IMAGEINFO_H_
