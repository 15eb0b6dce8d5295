#ifndef LUMIDEX_IMAGEINFO_H_
#define LUMIDEX_IMAGEINFO_H_

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

#include "ComTypes.h"

#if defined(__cplusplus)
#define LMD_OF_UINT32 : uint32_t
#else
#define LMD_OF_UINT32
#endif

// The groups of the records: where a value comes from. What Open keeps and what ParseBasic hands
// out is said there.
enum LMD_OF_UINT32 {
  LMD_GROUP_BASICS = 0x001,             // image size, orientation, samples per pixel, colour space
  LMD_GROUP_IFD0 = 0x002,               // TIFF 6.0; the record's id is the tag
  LMD_GROUP_EXIF = 0x004,               // EXIF 2.32 with the interoperability directory, by tag
  LMD_GROUP_GPS = 0x008,                // EXIF 2.32, section 4.6.6, by tag
  LMD_GROUP_IPTC = 0x010,               // IPTC-IIM 4.2, by the module's own numbers
  LMD_GROUP_DATES = 0x020,              // the tags 306 and 36867
  LMD_GROUP_XMP = 0x040,                // XMP properties, by numbers from 0xAA01 on
  LMD_GROUP_MAKERNOTE_SUMMARY = 0x080,  // what the maker notes say of lens and picture, in common
  LMD_GROUP_IFD1 = 0x200,               // the thumbnail's directory, by tag
  LMD_GROUP_MAKERNOTE = 0x400,          // maker-note tags
  LMD_GROUP_ICC = 0x800,                // fields of the ICC profile
};

// The identifiers of LMD_GROUP_BASICS that are no tags: 0 unknown, 1 sRGB, 3 Adobe RGB.
enum LMD_OF_UINT32 { LMD_ID_COLOR_SPACE = 11 };

// The value types of a record. Numbers are in the host's byte order.
enum LMD_OF_UINT32 {
  LMD_RECORD_INT32 = 1,           // signed 32-bit integers
  LMD_RECORD_SRATIONAL = 2,       // pairs of signed 32-bit integers: numerator, denominator
  LMD_RECORD_DOUBLE = 3,          // doubles
  LMD_RECORD_ASCII = 4,           // bytes of text with a final zero
  LMD_RECORD_WIDE_TEXT = 5,       // UTF-16 text with a final zero
  LMD_RECORD_BYTES = 6,           // raw bytes
  LMD_RECORD_UINT32 = 0x1001,     // unsigned 32-bit integers
  LMD_RECORD_URATIONAL = 0x1002,  // pairs of unsigned 32-bit integers: numerator, denominator
};

// One metadata value: plain data that frees nothing. In a parse result the value bytes belong to
// the result, and a host only reads them; in a record that a host passes for writing they are the
// host's, and the module only reads them during the call.
typedef struct CInfoRecord {
  uint32_t m_nGroup;  // one of LMD_GROUP_...
  uint32_t m_nId;     // the tag, or an identifier of the module's own
  uint32_t m_nType;   // one of LMD_RECORD_...
  uint32_t m_nSize;   // bytes at m_pData
  uint8_t* m_pData;   // the value
  double m_dValue;    // always 0
} CInfoRecord;

// The base of a parse result. The table is the module's own.
typedef struct CBASE_INFO {
  const void* m_pTable;
  uint32_t m_nState;  // 1 for a list
} CBASE_INFO;

// The records of one parse. A list whose m_pRecords is null is empty, whatever m_nCount says.
#if defined(__cplusplus)
struct CMETADATA_INFO_LIST : public CBASE_INFO {
#else
typedef struct CMETADATA_INFO_LIST CMETADATA_INFO_LIST;
struct CMETADATA_INFO_LIST {
  const void* m_pTable;
  uint32_t m_nState;
#endif
  CInfoRecord* m_pRecords;
  int32_t m_nCount;
};

// The layout is the same for every compiler of a 64-bit target; in a list the table is at 0, the
// state at 8, the records at 16, the count at 24.
static_assert(sizeof(CInfoRecord) == 32, "size of a record");
static_assert(offsetof(CInfoRecord, m_nGroup) == 0 && offsetof(CInfoRecord, m_nId) == 4, "");
static_assert(offsetof(CInfoRecord, m_nType) == 8 && offsetof(CInfoRecord, m_nSize) == 12, "");
static_assert(offsetof(CInfoRecord, m_pData) == 16 && offsetof(CInfoRecord, m_dValue) == 24, "");
static_assert(sizeof(CBASE_INFO) == 16 && offsetof(CBASE_INFO, m_nState) == 8, "size of a base");
static_assert(sizeof(CMETADATA_INFO_LIST) == 32, "size of a list");

// A parse result: a list behind a reference count, which may be held and released on any thread.
// It has no identifier of its own, and QueryInterface refuses any interface but IUnknown.
#undef INTERFACE
#define INTERFACE IImageInfo
#if defined(__cplusplus) && !defined(CINTERFACE)
struct IImageInfo : public IUnknown
#else
LMD_C_INTERFACE(IImageInfo)
#endif
{
  LMD_UNKNOWN_METHODS

  // 1 when a list is present, else 0. Slot 3.
  STDMETHOD_(int32_t, GetState)(THIS) PURE;

  // The list, not reference-counted: valid for as long as this object lives, and never changed
  // after the call that handed the object out. Null when there is none. Slot 4.
  STDMETHOD_(CMETADATA_INFO_LIST*, GetInfoList)(THIS) PURE;
};

#if defined(COBJMACROS) && (!defined(__cplusplus) || defined(CINTERFACE))
#define IImageInfo_QueryInterface(This, riid, ppv) (This)->lpVtbl->QueryInterface(This, riid, ppv)
#define IImageInfo_AddRef(This) (This)->lpVtbl->AddRef(This)
#define IImageInfo_Release(This) (This)->lpVtbl->Release(This)
#define IImageInfo_GetState(This) (This)->lpVtbl->GetState(This)
#define IImageInfo_GetInfoList(This) (This)->lpVtbl->GetInfoList(This)
#endif

#endif  // LUMIDEX_IMAGEINFO_H_
