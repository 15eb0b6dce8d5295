#include "GetterModel.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "core/VxMetadataWrapper.h"

namespace fuzz {
namespace {

constexpr std::uint32_t kXmpGroup = 64;
constexpr std::uint32_t kMakerNoteGroup = 1024;
constexpr std::uint32_t kProjectionType = 0xAB19;

struct Accepted {
  std::uint32_t type;
  std::uint32_t otherType;
  HRESULT mismatch;
};

Accepted AcceptedOf(Info info) {
  switch (info) {
    case Info::Number16:
      return {LMD_RECORD_UINT32, LMD_RECORD_UINT32, LMD_E_TYPE_MISMATCH_16};
    case Info::Number17:
      return {LMD_RECORD_SRATIONAL, LMD_RECORD_SRATIONAL, LMD_E_TYPE_MISMATCH_17};
    case Info::Number18:
      return {LMD_RECORD_INT32, LMD_RECORD_BYTES, LMD_E_TYPE_MISMATCH_18};
    case Info::Number19:
      return {LMD_RECORD_BYTES, LMD_RECORD_BYTES, LMD_E_TYPE_MISMATCH_19};
    case Info::Number20:
      return {LMD_RECORD_INT32, LMD_RECORD_INT32, LMD_E_TYPE_MISMATCH_20};
    default:
      return {LMD_RECORD_BYTES, LMD_RECORD_BYTES, LMD_E_TYPE_MISMATCH_21};
  }
}

bool Names(const CInfoRecord& record, Info info) {
  return record.m_nGroup == kMakerNoteGroup && record.m_nId == static_cast<std::uint32_t>(info);
}

bool IsAccepted(const CInfoRecord& record, const Accepted& accepted) {
  return record.m_nType == accepted.type || record.m_nType == accepted.otherType;
}

std::int32_t IntegerAt(std::span<const std::uint8_t> bytes, std::size_t index) {
  std::int32_t value = 0;
  std::memcpy(&value, bytes.subspan(4 * index, 4).data(), sizeof(value));
  return value;
}

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

// The characters of a text up to its first zero; what is not ASCII ends no number otherwise than a
// letter does.
std::string Narrow(const CInfoRecord& record) {
  std::string text;
  for (std::uint32_t i = 0; i + 1 < record.m_nSize; i += 2) {
    const int unit = record.m_pData[i] | record.m_pData[i + 1] << 8;
    if (unit == 0) break;
    text.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
  }
  return text;
}

std::size_t SkipDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

// The decimal number at the beginning of a text, or an empty text.
std::string DecimalPart(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  std::size_t at = 0;
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
  const std::size_t first = at;
  at = SkipDigits(text, at);
  std::size_t digits = at - first;
  if (at < text.size() && text[at] == '.') {
    const std::size_t fraction = SkipDigits(text, at + 1);
    digits += fraction - at - 1;
    at = fraction;
  }
  if (digits == 0) return {};
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t exponent = at + 1;
    if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) ++exponent;
    const std::size_t end = SkipDigits(text, exponent);
    if (end != exponent) at = end;
  }
  return std::string(text.substr(0, at));
}

}  // namespace

HRESULT GetterModel::Searchable(bool servesPng) const {
  if (fileType == FILETYPE_PNG && !servesPng) return LMD_E_NOT_FOUND;
  if (!hasResult) return LMD_E_INVALID_ARG;
  return records.empty() ? LMD_E_NOT_FOUND : S_OK;
}

GetterModel::Found GetterModel::FindInfo(Info info, bool servesPng) const {
  if (const HRESULT result = Searchable(servesPng); FAILED(result)) return {result, {}};
  const Accepted accepted = AcceptedOf(info);
  for (const CInfoRecord& record : records) {
    if (!Names(record, info)) continue;
    if (!IsAccepted(record, accepted)) return {accepted.mismatch, {}};
    return {S_OK, {record.m_pData, record.m_nSize}};
  }
  return {};
}

GetterModel::Found GetterModel::FindTriple(Info info, std::size_t size) const {
  if (const HRESULT result = Searchable(false); FAILED(result)) return {result, {}};
  const Accepted accepted = AcceptedOf(info);
  for (const CInfoRecord& record : records) {
    if (!Names(record, info)) continue;
    if (!IsAccepted(record, accepted)) return {accepted.mismatch, {}};
    if (record.m_nSize == size) return {S_OK, {record.m_pData, record.m_nSize}};
  }
  return {};
}

HRESULT GetterModel::Triple17(std::array<double, 3>* values) const {
  const Found found = FindTriple(Info::Number17, 24);
  if (FAILED(found.result)) return found.result;
  for (std::size_t i = 0; i < 3; ++i) {
    if (IntegerAt(found.bytes, 2 * i + 1) == 0) return E_FAIL;
  }
  for (std::size_t i = 0; i < 3; ++i) {
    (*values)[i] = static_cast<double>(IntegerAt(found.bytes, 2 * i)) /
                   static_cast<double>(IntegerAt(found.bytes, 2 * i + 1));
  }
  return S_OK;
}

HRESULT GetterModel::PoseAngle(Pose pose, float* value) const {
  if (const HRESULT result = Searchable(true); FAILED(result)) return result;
  for (const CInfoRecord& record : records) {
    if (record.m_nGroup != kXmpGroup || record.m_nId != static_cast<std::uint32_t>(pose)) continue;
    if (record.m_nType != LMD_RECORD_WIDE_TEXT) continue;
    *value = static_cast<float>(std::strtod(DecimalPart(Narrow(record)).c_str(), nullptr));
    return S_OK;
  }
  return LMD_E_NOT_FOUND;
}

HRESULT GetterModel::PanoramaByRecords() const {
  if (!hasResult) return LMD_E_INVALID_ARG;
  bool hasXmp = false;
  for (const CInfoRecord& record : records) {
    if (record.m_nGroup != kXmpGroup) continue;
    if (record.m_nId == kProjectionType) return S_OK;
    hasXmp = true;
  }
  return hasXmp ? LMD_E_NOT_PANORAMA : S_FALSE;
}

}  // namespace fuzz
