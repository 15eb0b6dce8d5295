#include "show/ValueText.h"

#include "Text.h"
#include "base/TypeSizes.h"
#include "names/Names.h"

namespace tool {
namespace {

std::string Decoded(const TagRow* row, const Value& value) {
  const bool hasData = !TagBytes(value.entry).empty();
  if (row == nullptr || row->decoder == nullptr || !hasData) return {};
  return row->decoder(value);
}

std::string OneLine(const std::string& text) {
  const std::string line = Printable(WithoutBlanksAround(text));
  return line.empty() ? "(empty)" : line;
}

std::string TextOfRow(const TagRow* row, const Value& value) {
  const std::string decoded = Decoded(row, value);
  return OneLine(decoded.empty() ? PlainText(value.entry) : decoded);
}

}  // namespace

std::string ValueText(std::int32_t block, const TagEntry& entry, const TagMap& table) {
  return TextOfRow(FindInBlock(block, entry.m_nTag), {entry, table});
}

std::string BasicsText(const CInfoRecord& record) {
  NodePool nodes;
  const TagMap none(nodes);
  const TagEntry entry = {record.m_nId, TYPE_LONG, 1, record.m_nSize, record.m_pData};
  return TextOfRow(FindInGroup(record.m_nGroup, record.m_nId), {entry, none});
}

}  // namespace tool
