#include "write/Assignments.h"

#include <algorithm>
#include <array>

#include "Text.h"
#include "write/NumberText.h"
#include "write/NumberValues.h"
#include "write/SpecialForms.h"
#include "write/WritableTags.h"
#include "writer/WriterTags.h"

namespace tool {
namespace {

// A name of the tool's own: latitude and longitude with their references.
constexpr std::string_view kPositionName = "GPSPosition";

struct Axis {
  WritableTag reference;
  WritableTag angle;
  char positive;
  char negative;
  int bound;
};

constexpr std::array<Axis, 2> kAxes = {{
    {{WRITER_GPS, 1, TYPE_ASCII}, {WRITER_GPS, 2, TYPE_RATIONAL}, 'N', 'S', kLargestLatitude},
    {{WRITER_GPS, 3, TYPE_ASCII}, {WRITER_GPS, 4, TYPE_RATIONAL}, 'E', 'W', kLargestLongitude},
}};

ParsedValue ParseValue(std::string_view text, const WritableTag& tag) {
  if (const FormParser parse = FindSpecialForm(tag.decoder)) return parse(text);
  if (tag.type != TYPE_ASCII) return ParseNumbers(text, tag.type, tag.decoder);
  ParsedValue value{{text.begin(), text.end()}, {}};
  value.bytes.push_back(0);
  return value;
}

OwnedRecord MakeRecord(const WritableTag& tag, const std::vector<std::uint8_t>& bytes) {
  OwnedRecord record;
  record.m_nGroup = tag.group;
  record.m_nId = tag.tag;
  record.m_nType = RecordTypeOf(tag.type);
  record.m_nSize = static_cast<std::uint32_t>(bytes.size());
  record.m_pData = new std::uint8_t[bytes.size()];
  std::copy(bytes.begin(), bytes.end(), record.m_pData);
  return record;
}

std::string WrongName(std::string_view name) {
  const bool isKnown = IsTagName(name);
  return Concat(
      {"'", name, isKnown ? "' is a tag that is not written" : "' is no tag that show names"});
}

std::string AddTag(std::string_view name, std::string_view text,
                   std::vector<OwnedRecord>& records) {
  const auto tag = FindWritableTag(name);
  if (!tag) return WrongName(name);
  const ParsedValue value = ParseValue(text, *tag);
  if (!value.error.empty()) return Concat({name, ": ", value.error});
  records.push_back(MakeRecord(*tag, value.bytes));
  return {};
}

std::string AddAxis(const Axis& axis, std::string_view text, std::vector<OwnedRecord>& records) {
  const Coordinate coordinate = ParseCoordinate(text, axis.bound);
  if (!coordinate.angle.error.empty()) return coordinate.angle.error;
  const char side = coordinate.isNegative ? axis.negative : axis.positive;
  records.push_back(MakeRecord(axis.reference, {static_cast<std::uint8_t>(side), 0}));
  records.push_back(MakeRecord(axis.angle, coordinate.angle.bytes));
  return {};
}

std::string AddPosition(std::string_view text, std::vector<OwnedRecord>& records) {
  const auto parts = SplitParts(text, ',');
  if (parts.size() != kAxes.size()) {
    return Concat({"'", text, "' is no position, such as 48.8584,2.2945"});
  }
  const std::size_t before = records.size();
  for (std::size_t i = 0; i < kAxes.size(); ++i) {
    const std::string error = AddAxis(kAxes[i], parts[i], records);
    if (error.empty()) continue;
    records.resize(before);
    return error;
  }
  return {};
}

}  // namespace

std::string AddAssignment(std::string_view text, std::vector<OwnedRecord>& records) {
  if (CleanUtf8(text) != text) return Concat({"'", CleanUtf8(text), "' is no UTF-8 text"});
  const auto equals = text.find('=');
  if (equals == std::string_view::npos) return Concat({"'", text, "' is not NAME=VALUE"});
  const std::string_view name = text.substr(0, equals);
  const std::string_view value = text.substr(equals + 1);
  if (name != kPositionName) return AddTag(name, value, records);
  const std::string error = AddPosition(value, records);
  return error.empty() ? error : Concat({name, ": ", error});
}

}  // namespace tool
