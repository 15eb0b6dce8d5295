#ifndef LUMIDEX_BASE_OWNEDRECORDS_H_
#define LUMIDEX_BASE_OWNEDRECORDS_H_

// Records and lists of the module's own: what hosts see of them is plain data; these free it.

#include <lumidex/ImageInfo.h>

// A record that owns its value bytes.
struct OwnedRecord : public CInfoRecord {
  OwnedRecord() noexcept : CInfoRecord{} {}
  OwnedRecord(OwnedRecord&& other) noexcept : CInfoRecord{other} { other.m_pData = nullptr; }
  OwnedRecord& operator=(OwnedRecord&& other) noexcept {
    if (this == &other) return *this;
    delete[] m_pData;
    static_cast<CInfoRecord&>(*this) = other;
    other.m_pData = nullptr;
    return *this;
  }
  ~OwnedRecord() { delete[] m_pData; }
};
static_assert(sizeof(OwnedRecord) == sizeof(CInfoRecord));

// A list that owns its records, which are an array of OwnedRecord. Hosts find a table in front, as
// in an object with virtual operations; its one entry is the function that deletes the list.
struct OwnedRecordList final : public CMETADATA_INFO_LIST {
  OwnedRecordList() noexcept : CMETADATA_INFO_LIST{{&kTable, 1}, nullptr, 0} {}
  OwnedRecordList(const OwnedRecordList&) = delete;
  OwnedRecordList& operator=(const OwnedRecordList&) = delete;
  ~OwnedRecordList() { delete[] static_cast<OwnedRecord*>(m_pRecords); }

 private:
  using Destroy = void (*)(OwnedRecordList* list);
  static void DestroyList(OwnedRecordList* list) { delete list; }
  static constexpr Destroy kTable = DestroyList;
};

#endif  // LUMIDEX_BASE_OWNEDRECORDS_H_
