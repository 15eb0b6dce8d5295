// The methods that answer from the records of the last parse.

#include <algorithm>
#include <array>
#include <string>

#include "base/ByteOrder.h"
#include "base/FileStream.h"
#include "base/Guarded.h"
#include "base/Numbers.h"
#include "base/WideText.h"
#include "com/Lumidex.h"
#include "container/XmpLocators.h"
#include "xmp/TextConversion.h"

namespace {

// XMP properties of the GPano schema, as the records name them.
constexpr std::uint32_t kProjectionTypeId = 0xAB19;
constexpr std::uint32_t kPoseHeadingId = 0xAB20;
constexpr std::uint32_t kPosePitchId = 0xAB21;
constexpr std::uint32_t kPoseRollId = 0xAB22;

std::span<const std::uint8_t> BytesOf(const CInfoRecord& record) {
  return {record.m_pData, record.m_nSize};
}

}  // namespace

// A maker-note record that the interface serves by its number.
struct CLumidex::InfoRecord {
  std::uint32_t id;
  std::uint32_t type;
  std::uint32_t otherType;
  HRESULT mismatch;
  bool dataServesPng =
      false;  // by design the data method of record 18 does not ask for the file type

  bool Accepts(const CInfoRecord& record) const {
    return record.m_nType == type || record.m_nType == otherType;
  }
  bool IsNamedBy(const CInfoRecord& record) const {
    return record.m_nGroup == CATEGORY_MAKERNOTE && record.m_nId == id;
  }
};

// clang-format off
const CLumidex::InfoRecord CLumidex::kInfo16 = {
    16, LMD_RECORD_UINT32,    LMD_RECORD_UINT32,    LMD_E_TYPE_MISMATCH_16};
const CLumidex::InfoRecord CLumidex::kInfo17 = {
    17, LMD_RECORD_SRATIONAL, LMD_RECORD_SRATIONAL, LMD_E_TYPE_MISMATCH_17};
const CLumidex::InfoRecord CLumidex::kInfo18 = {
    18, LMD_RECORD_INT32,     LMD_RECORD_BYTES,     LMD_E_TYPE_MISMATCH_18, true};
const CLumidex::InfoRecord CLumidex::kInfo19 = {
    19, LMD_RECORD_BYTES,     LMD_RECORD_BYTES,     LMD_E_TYPE_MISMATCH_19};
const CLumidex::InfoRecord CLumidex::kInfo20 = {
    20, LMD_RECORD_INT32,     LMD_RECORD_INT32,     LMD_E_TYPE_MISMATCH_20};
const CLumidex::InfoRecord CLumidex::kInfo21 = {
    21, LMD_RECORD_BYTES,     LMD_RECORD_BYTES,     LMD_E_TYPE_MISMATCH_21};
// clang-format on

bool CLumidex::HasParseResult() const {
  return m_pImageInfo != nullptr && m_pImageInfo->GetState() == 1;
}

// The records of the last parse; LMD_E_NOT_FOUND when there are none.
HRESULT CLumidex::GetRecords(Records* records) const {
  if (!HasParseResult()) return LMD_E_INVALID_ARG;
  const CMETADATA_INFO_LIST* list = m_pImageInfo->GetInfoList();
  if (list->m_nCount < 1 || list->m_pRecords == nullptr) return LMD_E_NOT_FOUND;
  *records = {list->m_pRecords, static_cast<std::size_t>(list->m_nCount)};
  return S_OK;
}

// The first record of a number; its type decides.
HRESULT CLumidex::FindInfo(const InfoRecord& info, const CInfoRecord** record) const {
  Records records;
  const HRESULT result = GetRecords(&records);
  if (FAILED(result)) return result;
  for (const CInfoRecord& candidate : records) {
    if (!info.IsNamedBy(candidate)) continue;
    *record = &candidate;
    return info.Accepts(candidate) ? S_OK : info.mismatch;
  }
  return LMD_E_NOT_FOUND;
}

// The first record of a number and a size; a record of another type in front of it decides.
HRESULT CLumidex::FindInfoOfSize(const InfoRecord& info, std::uint32_t size,
                                 const CInfoRecord** record) const {
  Records records;
  const HRESULT result = GetRecords(&records);
  if (FAILED(result)) return result;
  for (const CInfoRecord& candidate : records) {
    if (!info.IsNamedBy(candidate)) continue;
    if (!info.Accepts(candidate)) return info.mismatch;
    if (candidate.m_nSize != size) continue;
    *record = &candidate;
    return S_OK;
  }
  return LMD_E_NOT_FOUND;
}

HRESULT CLumidex::GetInfoSize(const InfoRecord& info, std::uint32_t* pSize) const {
  if (m_nFileType == FILETYPE_PNG) return LMD_E_NOT_FOUND;
  if (pSize == nullptr) return LMD_E_INVALID_ARG;
  const CInfoRecord* record = nullptr;
  const HRESULT result = FindInfo(info, &record);
  if (SUCCEEDED(result)) *pSize = record->m_nSize;
  return result;
}

HRESULT CLumidex::GetInfoData(const InfoRecord& info, std::uint32_t* pSize,
                              std::uint8_t* pBuffer) const {
  if (m_nFileType == FILETYPE_PNG && !info.dataServesPng) return LMD_E_NOT_FOUND;
  if (pSize == nullptr || pBuffer == nullptr) return LMD_E_INVALID_ARG;
  const CInfoRecord* record = nullptr;
  const HRESULT result = FindInfo(info, &record);
  if (FAILED(result)) return result;
  if (*pSize < record->m_nSize) return LMD_E_BUFFER_TOO_SMALL;
  std::copy_n(record->m_pData, record->m_nSize, pBuffer);
  *pSize = record->m_nSize;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CLumidex::GetInfo16(std::uint32_t* pValue) noexcept {
  if (m_nFileType == FILETYPE_PNG) return LMD_E_NOT_FOUND;
  if (pValue == nullptr) return LMD_E_INVALID_ARG;
  const CInfoRecord* record = nullptr;
  const HRESULT result = FindInfo(kInfo16, &record);
  if (SUCCEEDED(result)) *pValue = HostValue<std::uint32_t>(BytesOf(*record));
  return result;
}

HRESULT STDMETHODCALLTYPE CLumidex::GetInfo17Size(std::uint32_t* pSize) noexcept {
  return GetInfoSize(kInfo17, pSize);
}

HRESULT STDMETHODCALLTYPE CLumidex::GetInfo17Data(std::uint32_t* pSize,
                                                  std::uint8_t* pBuffer) noexcept {
  return GetInfoData(kInfo17, pSize, pBuffer);
}

HRESULT STDMETHODCALLTYPE CLumidex::GetInfo17Triple(double* p1, double* p2, double* p3) noexcept {
  if (m_nFileType == FILETYPE_PNG) return LMD_E_NOT_FOUND;
  if (p1 == nullptr || p2 == nullptr || p3 == nullptr) return LMD_E_INVALID_ARG;
  const CInfoRecord* record = nullptr;
  const HRESULT result = FindInfoOfSize(kInfo17, 24, &record);
  if (FAILED(result)) return result;

  std::array<double, 3> quotients;
  for (std::size_t i = 0; i < quotients.size(); ++i) {
    const auto numerator = HostValue<std::int32_t>(BytesOf(*record), 2 * i);
    const auto denominator = HostValue<std::int32_t>(BytesOf(*record), 2 * i + 1);
    if (denominator == 0) return E_FAIL;
    quotients[i] = static_cast<double>(numerator) / denominator;
  }
  *p1 = quotients[0];
  *p2 = quotients[1];
  *p3 = quotients[2];
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CLumidex::GetInfo18Size(std::uint32_t* pSize) noexcept {
  return GetInfoSize(kInfo18, pSize);
}

HRESULT STDMETHODCALLTYPE CLumidex::GetInfo18Data(std::uint32_t* pSize,
                                                  std::uint8_t* pBuffer) noexcept {
  return GetInfoData(kInfo18, pSize, pBuffer);
}

HRESULT STDMETHODCALLTYPE CLumidex::GetInfo19Size(std::uint32_t* pSize) noexcept {
  return GetInfoSize(kInfo19, pSize);
}

HRESULT STDMETHODCALLTYPE CLumidex::GetInfo19Data(std::uint32_t* pSize,
                                                  std::uint8_t* pBuffer) noexcept {
  return GetInfoData(kInfo19, pSize, pBuffer);
}

HRESULT STDMETHODCALLTYPE CLumidex::GetInfo20Triple(std::uint32_t* p1, std::uint32_t* p2,
                                                    std::uint32_t* p3) noexcept {
  if (m_nFileType == FILETYPE_PNG) return LMD_E_NOT_FOUND;
  if (p1 == nullptr || p2 == nullptr || p3 == nullptr) return LMD_E_INVALID_ARG;
  const CInfoRecord* record = nullptr;
  const HRESULT result = FindInfoOfSize(kInfo20, 12, &record);
  if (FAILED(result)) return result;
  *p1 = HostValue<std::uint32_t>(BytesOf(*record), 0);
  *p2 = HostValue<std::uint32_t>(BytesOf(*record), 1);
  *p3 = HostValue<std::uint32_t>(BytesOf(*record), 2);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CLumidex::GetInfo21Size(std::uint32_t* pSize) noexcept {
  return GetInfoSize(kInfo21, pSize);
}

HRESULT STDMETHODCALLTYPE CLumidex::GetInfo21Data(std::uint32_t* pSize,
                                                  std::uint8_t* pBuffer) noexcept {
  return GetInfoData(kInfo21, pSize, pBuffer);
}

// By design the file type is not asked for: a PNG has no parse result.
HRESULT CLumidex::GetPose(std::uint32_t id, float* pValue) const {
  if (pValue == nullptr) return LMD_E_INVALID_ARG;
  Records records;
  const HRESULT result = GetRecords(&records);
  if (FAILED(result)) return result;
  for (const CInfoRecord& record : records) {
    if (record.m_nGroup != CATEGORY_XMP || record.m_nId != id) continue;
    if (record.m_nType != LMD_RECORD_WIDE_TEXT) continue;
    *pValue = static_cast<float>(ParseDecimal(ToAnsiString(LoadWideText(BytesOf(record)))));
    return S_OK;
  }
  return LMD_E_NOT_FOUND;
}

HRESULT STDMETHODCALLTYPE CLumidex::GetPoseHeading(float* pValue) noexcept {
  return Guarded([&] { return GetPose(kPoseHeadingId, pValue); });
}

HRESULT STDMETHODCALLTYPE CLumidex::GetPosePitch(float* pValue) noexcept {
  return Guarded([&] { return GetPose(kPosePitchId, pValue); });
}

HRESULT STDMETHODCALLTYPE CLumidex::GetPoseRoll(float* pValue) noexcept {
  return Guarded([&] { return GetPose(kPoseRollId, pValue); });
}

HRESULT CLumidex::IsPanoramaPng(std::uint32_t* pFlag) const {
  FileStream stream;
  if (!stream.Open(m_szSrcPath, LMD_W("rb"))) return LMD_E_NOT_FOUND;
  std::uint64_t position = 0;
  const HRESULT result = LocatePngXmp(&stream, &position);
  if (result != LMD_E_XMP_FOUND) return result;
  *pFlag = 1;
  return S_OK;
}

// Any projection type marks the file; its value is not looked at.
HRESULT CLumidex::IsPanoramaJpeg(std::uint32_t* pFlag) const {
  Records records;
  const HRESULT result = GetRecords(&records);
  if (result == LMD_E_INVALID_ARG) return result;
  bool hasXmp = false;
  for (const CInfoRecord& record : records) {
    if (record.m_nGroup != CATEGORY_XMP) continue;
    hasXmp = true;
    if (record.m_nId != kProjectionTypeId) continue;
    *pFlag = 1;
    return S_OK;
  }
  if (hasXmp) return LMD_E_NOT_PANORAMA;

  FileStream stream;
  if (!stream.Open(m_szSrcPath, LMD_W("rb"))) return LMD_E_NOT_FOUND;
  std::uint64_t position = 0;
  return LocateJpegXmp(&stream, &position) == LMD_E_XMP_FOUND ? LMD_E_NOT_PANORAMA
                                                              : LMD_E_NOT_FOUND;
}

HRESULT STDMETHODCALLTYPE CLumidex::IsPanorama(std::uint32_t* pFlag) noexcept {
  if (pFlag == nullptr) return LMD_E_INVALID_ARG;
  *pFlag = 0;
  return Guarded([&]() -> HRESULT {
    if (m_nFileType == FILETYPE_PNG) return IsPanoramaPng(pFlag);
    if (m_nFileType == FILETYPE_JPEG) return IsPanoramaJpeg(pFlag);
    return LMD_E_NOT_FOUND;
  });
}
