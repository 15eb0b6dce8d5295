#ifndef LUMIDEX_TESTS_COM_FAKEIMAGEINFO_H_
#define LUMIDEX_TESTS_COM_FAKEIMAGEINFO_H_

// A parse result with records of the test's choice. It counts references and never dies by them.

#include <cstdint>
#include <vector>

#include <lumidex/ImageInfo.h>

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
    m_fakes = records;
    m_records.clear();
    for (FakeRecord& fake : m_fakes) {
      const auto size = static_cast<std::uint32_t>(fake.value.size());
      m_records.push_back({fake.group, fake.id, fake.type, size, fake.value.data(), 0});
    }
    list.m_pRecords = m_records.empty() ? nullptr : m_records.data();
    list.m_nCount = static_cast<std::int32_t>(m_records.size());
  }

  std::int32_t state = 1;
  CMETADATA_INFO_LIST list = {{nullptr, 1}, nullptr, 0};
  ULONG references = 0;

 private:
  std::vector<FakeRecord> m_fakes;
  std::vector<CInfoRecord> m_records;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_COM_FAKEIMAGEINFO_H_
