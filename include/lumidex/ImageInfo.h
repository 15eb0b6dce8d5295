#ifndef LUMIDEX_IMAGEINFO_H_
#define LUMIDEX_IMAGEINFO_H_

#include <cstddef>
#include <cstdint>

#include <lumidex/ComTypes.h>

// The value types of a result record. Numbers are in the host's byte order.
enum : std::uint32_t {
  LMD_RECORD_INT32 = 1,           // signed 32-bit integers
  LMD_RECORD_SRATIONAL = 2,       // pairs of signed 32-bit integers: numerator, denominator
  LMD_RECORD_DOUBLE = 3,          // doubles
  LMD_RECORD_ASCII = 4,           // bytes of text with a final zero
  LMD_RECORD_WIDE_TEXT = 5,       // UTF-16 text with a final zero
  LMD_RECORD_BYTES = 6,           // raw bytes
  LMD_RECORD_UINT32 = 0x1001,     // unsigned 32-bit integers
  LMD_RECORD_URATIONAL = 0x1002,  // pairs of unsigned 32-bit integers: numerator, denominator
};

// One metadata value of a parse. The record belongs to its list, the value bytes to the record; a
// host only reads them.
struct CInfoRecord {
  std::uint32_t m_nGroup = 0;  // the category bit of the parse that produced the record
  std::uint32_t m_nId = 0;     // the tag, or an identifier of the module's own
  std::uint32_t m_nType = 0;   // one of LMD_RECORD_...
  std::uint32_t m_nSize = 0;   // bytes at m_pData
  std::uint8_t* m_pData = nullptr;
  double m_dValue = 0.0;  // always 0

  CInfoRecord() = default;
  CInfoRecord(CInfoRecord&& other) noexcept { *this = static_cast<CInfoRecord&&>(other); }
  CInfoRecord& operator=(CInfoRecord&& other) noexcept {
    if (this == &other) return *this;
    delete[] m_pData;
    m_nGroup = other.m_nGroup;
    m_nId = other.m_nId;
    m_nType = other.m_nType;
    m_nSize = other.m_nSize;
    m_pData = other.m_pData;
    m_dValue = other.m_dValue;
    other.m_pData = nullptr;
    return *this;
  }
  ~CInfoRecord() { delete[] m_pData; }
};
static_assert(sizeof(CInfoRecord) == 32);
static_assert(offsetof(CInfoRecord, m_nGroup) == 0 && offsetof(CInfoRecord, m_nId) == 4);
static_assert(offsetof(CInfoRecord, m_nType) == 8 && offsetof(CInfoRecord, m_nSize) == 12);
static_assert(offsetof(CInfoRecord, m_pData) == 16 && offsetof(CInfoRecord, m_dValue) == 24);

// The base of a parse result. In memory: a table pointer at 0, m_nState at 8.
struct CBASE_INFO {
  virtual ~CBASE_INFO() = default;
  CBASE_INFO() = default;
  CBASE_INFO(const CBASE_INFO&) = delete;
  CBASE_INFO& operator=(const CBASE_INFO&) = delete;

  std::uint32_t m_nState = 0;  // 1 once constructed as a list
};

// The records of one parse. In memory: m_pRecords at 16, m_nCount at 24. A list whose m_pRecords is
// null is empty, whatever m_nCount says.
struct CMETADATA_INFO_LIST : public CBASE_INFO {
  CMETADATA_INFO_LIST() { m_nState = 1; }
  ~CMETADATA_INFO_LIST() override { delete[] m_pRecords; }

  CInfoRecord* m_pRecords = nullptr;
  std::int32_t m_nCount = 0;
};

// A list behind a reference count. Any interface but IUnknown is refused by QueryInterface.
struct IImageInfo : public IUnknown {
  // 1 when a list is present, else 0. Slot 3.
  virtual std::int32_t STDMETHODCALLTYPE GetState() = 0;

  // The list, not reference-counted: valid for as long as this object lives. Slot 4.
  virtual CMETADATA_INFO_LIST* STDMETHODCALLTYPE GetInfoList() = 0;
};

#endif  // LUMIDEX_IMAGEINFO_H_
