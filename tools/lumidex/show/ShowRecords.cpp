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

constexpr std::size_t kValueColumns = 80;
constexpr std::size_t kManyValues = 16;
constexpr std::size_t kManyBytes = 32;

template <class Number>
std::string NumberText(Number number) {
  if constexpr (std::is_floating_point_v<Number>) {
    return tool::Number(number, 6);
  } else {
    return std::to_string(number);
  }
}

std::string Cut(std::string text, std::size_t count, std::size_t shown, const char* unit) {
  if (count > shown) text += Concat({" ... (", std::to_string(count), unit, ")"});
  return text;
}

template <class Number>
std::string Numbers(const CInfoRecord& record) {
  const std::size_t count = RecordCount(record, sizeof(Number));
  std::string out;
  for (std::size_t i = 0; i < std::min(count, kManyValues); ++i) {
    AppendPart(out, " ", NumberText(HostValue<Number>(RecordBytes(record), i)));
  }
  return Cut(std::move(out), count, kManyValues, " values");
}

template <class Number>
std::string Rationals(const CInfoRecord& record) {
  const std::size_t count = RecordCount(record, 2 * sizeof(Number));
  std::string out;
  for (std::size_t i = 0; i < std::min(count, kManyValues); ++i) {
    const auto numerator = HostValue<Number>(RecordBytes(record), 2 * i);
    const auto denominator = HostValue<Number>(RecordBytes(record), 2 * i + 1);
    AppendPart(out, " ", Concat({NumberText(numerator), "/", NumberText(denominator)}));
  }
  return Cut(std::move(out), count, kManyValues, " values");
}

std::string Bytes(const CInfoRecord& record) {
  const auto bytes = RecordBytes(record);
  return Cut(HexBytes(bytes.first(std::min(bytes.size(), kManyBytes))), bytes.size(), kManyBytes,
             " bytes");
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
      return Shorten(Concat({"\"", Printable(RecordText(record)), "\""}), kValueColumns);
    default:
      return Bytes(record);
  }
}

// Group, identifier, name, type, value.
using Row = std::array<std::string, 5>;

Row RowOf(const CInfoRecord& record) {
  const TagRow* name = FindInGroup(record.m_nGroup, record.m_nId);
  return {GroupTitle(record.m_nGroup) + " (" + std::to_string(record.m_nGroup) + ")",
          HexNumber(record.m_nId, 4), name != nullptr ? name->name : "-",
          RecordTypeName(record.m_nType), ValueText(record)};
}

}  // namespace

std::string RecordList(const Photo& photo) {
  std::vector<Row> rows;
  std::array<std::size_t, std::tuple_size_v<Row>> widths{};
  for (const CInfoRecord& record : photo.records) {
    const Row& row = rows.emplace_back(RowOf(record));
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
