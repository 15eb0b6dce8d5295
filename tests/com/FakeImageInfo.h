#ifndef LUMIDEX_TESTS_COM_FAKEIMAGEINFO_H_
#define LUMIDEX_TESTS_COM_FAKEIMAGEINFO_H_

// A parse result with records of the test's choice. It counts references and never dies by them.

#include <algorithm>
#include <cstdint>
#include <vector>

#include <lumidex/ImageInfo.h>

#include "base/OwnedRecords.h"
#include "support/Bytes.h"

namespace test {

struct FakeRecord {
  std::uint32_t group;
  std::uint32_t id;
  std::uint32_t type;
  Bytes value;
};

class FakeImageInfo final : public IImageInfo {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** ppv) override {
    *ppv = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  std::int32_t STDMETHODCALLTYPE GetState() override { return state; }
  CMETADATA_INFO_LIST* STDMETHODCALLTYPE GetInfoList() override { return &list; }

  void SetRecords(const std::vector<FakeRecord>& records) {
    delete[] static_cast<OwnedRecord*>(list.m_pRecords);
    list.m_pRecords = records.empty() ? nullptr : new OwnedRecord[records.size()];
    list.m_nCount = static_cast<std::int32_t>(records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
      CInfoRecord& record = list.m_pRecords[i];
      record.m_nGroup = records[i].group;
      record.m_nId = records[i].id;
      record.m_nType = records[i].type;
      record.m_nSize = static_cast<std::uint32_t>(records[i].value.size());
      if (records[i].value.empty()) continue;
      record.m_pData = new std::uint8_t[records[i].value.size()];
      std::copy(records[i].value.begin(), records[i].value.end(), record.m_pData);
    }
  }

  std::int32_t state = 1;
  OwnedRecordList list;
  ULONG references = 0;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_COM_FAKEIMAGEINFO_H_
