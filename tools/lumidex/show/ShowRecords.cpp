#include <algorithm>
#include <array>
#include <vector>

#include "Text.h"
#include "base/ByteOrder.h"
#include "names/Names.h"
#include "show/RecordValue.h"
#include "show/Show.h"

namespace tool {
namespace {

template <class Number>
std::string NumberText(Number number) {
  if constexpr (std::is_floating_point_v<Number>) {
    return ExactNumber(number);
  } else {
    return std::to_string(number);
  }
}

template <class Number>
std::string Numbers(const CInfoRecord& record) {
  std::string out;
  for (std::size_t i = 0; i < RecordCount(record, sizeof(Number)); ++i) {
    AppendPart(out, " ", NumberText(HostValue<Number>(RecordBytes(record), i)));
  }
  return out;
}

template <class Number>
std::string Rationals(const CInfoRecord& record) {
  std::string out;
  for (std::size_t i = 0; i < RecordCount(record, 2 * sizeof(Number)); ++i) {
    const auto numerator = HostValue<Number>(RecordBytes(record), 2 * i);
    const auto denominator = HostValue<Number>(RecordBytes(record), 2 * i + 1);
    AppendPart(out, " ", Concat({NumberText(numerator), "/", NumberText(denominator)}));
  }
  return out;
}

std::string ValueText(const CInfoRecord& record) {
  switch (record.m_nType) {
    case LMD_RECORD_INT32:
      return Numbers<std::int32_t>(record);
    case LMD_RECORD_UINT32:
      return Numbers<std::uint32_t>(record);
    case LMD_RECORD_SRATIONAL:
      return Rationals<std::int32_t>(record);
    case LMD_RECORD_URATIONAL:
      return Rationals<std::uint32_t>(record);
    case LMD_RECORD_DOUBLE:
      return Numbers<double>(record);
    case LMD_RECORD_ASCII:
    case LMD_RECORD_WIDE_TEXT:
      return Concat({"\"", Printable(RecordText(record)), "\""});
    default:
      return HexBytes(RecordBytes(record));
  }
}

// Group, identifier, name, type, value.
using Row = std::array<std::string, 5>;

Row RowOf(const CInfoRecord& record, const Options& options) {
  const TagRow* name = FindInGroup(record.m_nGroup, record.m_nId);
  return {GroupTitle(record.m_nGroup) + " (" + std::to_string(record.m_nGroup) + ")",
          HexNumber(record.m_nId, 4), name != nullptr ? name->name : "-",
          RecordTypeName(record.m_nType), Cut(ValueText(record), options.cut)};
}

}  // namespace

std::string RecordList(const Photo& photo, const Options& options) {
  std::vector<Row> rows;
  std::array<std::size_t, std::tuple_size_v<Row>> widths{};
  for (const CInfoRecord& record : photo.records) {
    const Row& row = rows.emplace_back(RowOf(record, options));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], Columns(row[i]));
  }
  std::string out = Printable(photo.file) + "\n";
  for (const Row& row : rows) {
    out += " ";
    for (std::size_t i = 0; i + 1 < row.size(); ++i)
      out += Concat({" ", Pad(row[i], widths[i]), " "});
    out += Concat({" ", row.back(), "\n"});
  }
  return out;
}

}  // namespace tool
