#include "show/RecordValue.h"

#include "Text.h"

namespace tool {

std::span<const std::uint8_t> RecordBytes(const CInfoRecord& record) {
  if (record.m_pData == nullptr) return {};
  return {record.m_pData, record.m_nSize};
}

std::size_t RecordCount(const CInfoRecord& record, std::size_t size) {
  return (RecordBytes(record).size() + size - 1) / size;
}

std::string RecordText(const CInfoRecord& record) {
  if (record.m_nType == LMD_RECORD_WIDE_TEXT) {
    WideString text = WideFromBytes(RecordBytes(record));
    if (!text.empty() && text.back() == 0) text.pop_back();
    return Utf8FromWide(text);
  }
  std::string text = TextFromBytes(RecordBytes(record));
  if (!text.empty() && text.back() == '\0') text.pop_back();
  return CleanUtf8(text);
}

}  // namespace tool
