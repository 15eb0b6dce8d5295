#include "write/Assignments.h"

#include <algorithm>
#include <array>
#include <new>

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

void AddRecord(const WritableTag& tag, const std::vector<std::uint8_t>& bytes,
               OwnedRecords& records) {
  const CInfoRecord* record = records.Add(tag.group, tag.tag, RecordTypeOf(tag.type), bytes.size());
  if (record == nullptr) throw std::bad_alloc();
  std::copy(bytes.begin(), bytes.end(), record->m_pData);
}

std::string WrongName(std::string_view name) {
  const bool isKnown = IsTagName(name);
  return Concat(
      {"'", name, isKnown ? "' is a tag that is not written" : "' is no tag that show names"});
}

std::string AddTag(std::string_view name, std::string_view text, OwnedRecords& records) {
  const auto tag = FindWritableTag(name);
  if (!tag) return WrongName(name);
  const ParsedValue value = ParseValue(text, *tag);
  if (!value.error.empty()) return Concat({name, ": ", value.error});
  AddRecord(*tag, value.bytes, records);
  return {};
}

void AddAxis(const Axis& axis, const Coordinate& coordinate, OwnedRecords& records) {
  const char side = coordinate.isNegative ? axis.negative : axis.positive;
  AddRecord(axis.reference, {static_cast<std::uint8_t>(side), 0}, records);
  AddRecord(axis.angle, coordinate.angle.bytes, records);
}

std::string AddPosition(std::string_view text, OwnedRecords& records) {
  const auto parts = SplitParts(text, ',');
  if (parts.size() != kAxes.size()) {
    return Concat({"'", text, "' is no position, such as 48.8584,2.2945"});
  }
  std::array<Coordinate, kAxes.size()> coordinates;
  for (std::size_t i = 0; i < kAxes.size(); ++i) {
    coordinates[i] = ParseCoordinate(parts[i], kAxes[i].bound);
    if (!coordinates[i].angle.error.empty()) return coordinates[i].angle.error;
  }
  for (std::size_t i = 0; i < kAxes.size(); ++i) AddAxis(kAxes[i], coordinates[i], records);
  return {};
}

}  // namespace

std::string AddAssignment(std::string_view text, OwnedRecords& records) {
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
