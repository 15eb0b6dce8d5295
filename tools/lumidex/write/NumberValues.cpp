#include "write/NumberValues.h"

#include <array>
#include <limits>
#include <string>

#include <lumidex/ImageInfo.h>

#include "Tables.h"
#include "Text.h"
#include "base/ByteOrder.h"
#include "values/Decoders.h"

namespace tool {
namespace {

enum class Layout { Byte, Word, Pair };

struct TypeRow {
  std::uint32_t id;
  Layout layout;
  NumberRange range;
  std::uint32_t recordType;
};

constexpr std::size_t kAnyCount = std::numeric_limits<std::size_t>::max();

// The numbers of a value as its decoder reads them.
struct NumberForm {
  Decoder decoder;
  std::string_view prefix;
  std::string_view suffix;
  std::size_t fewest;
  std::size_t most;
};

// clang-format off
constexpr auto kTypes = std::to_array<TypeRow>({
    {TYPE_BYTE,      Layout::Byte, {0, 0xFF},                LMD_RECORD_BYTES},
    {TYPE_SHORT,     Layout::Word, {0, 0xFFFF},              LMD_RECORD_UINT32},
    {TYPE_LONG,      Layout::Word, {0, 0xFFFFFFFF},          LMD_RECORD_UINT32},
    {TYPE_RATIONAL,  Layout::Pair, {0, 0xFFFFFFFF},          LMD_RECORD_URATIONAL},
    {TYPE_UNDEFINED, Layout::Byte, {0, 0xFF},                LMD_RECORD_BYTES},
    {TYPE_SSHORT,    Layout::Word, {-0x8000, 0x7FFF},        LMD_RECORD_INT32},
    {TYPE_SRATIONAL, Layout::Pair, {-0x80000000LL, 0x7FFFFFFF}, LMD_RECORD_SRATIONAL},
});

constexpr NumberForm kPlainForm = {nullptr, "", "", 1, kAnyCount};

// A list for what is one number is mostly a decimal comma.
constexpr auto kForms = std::to_array<NumberForm>({
    {ExposureSeconds,      "",    "s",  1, 1},
    {ShutterApex,          "",    "",   1, 1},
    {FNumber,              "f/",  "",   1, 1},
    {ApertureApex,         "",    "",   1, 1},
    {ExposureValue,        "",    "EV", 1, 1},
    {Brightness,           "",    "EV", 1, 1},
    {Millimetres,          "",    "mm", 1, 1},
    {Metres,               "",    "m",  1, 1},
    {IsoSpeed,             "ISO", "",   1, kAnyCount},
    {ZoomRatio,            "",    "x",  1, 1},
    {Resolution,           "",    "",   1, 1},
    {FocalPlaneResolution, "",    "",   1, 1},
    {Altitude,             "",    "m",  1, 1},
    {Speed,                "",    "",   1, 1},
    {Track,                "",    "",   1, 1},
    {ImageDirection,       "",    "",   1, 1},
    {Bearing,              "",    "",   1, 1},
    {Distance,             "",    "",   1, 1},
    {SubjectArea,          "",    "",   2, 4},
    {LensSpecification,    "",    "",   4, 4},
    {Latitude,             "",    "",   3, 3},
    {Longitude,            "",    "",   3, 3},
    {DestinationLatitude,  "",    "",   3, 3},
    {DestinationLongitude, "",    "",   3, 3},
});
// clang-format on
static_assert(IsAscending(kTypes));

const NumberForm& FormOf(Decoder decoder) {
  const auto* form =
      FindInTable(kForms, [&](const NumberForm& row) { return row.decoder == decoder; });
  return form != nullptr ? *form : kPlainForm;
}

std::string_view WithoutUnit(std::string_view text, const NumberForm& form) {
  if (text.starts_with(form.prefix)) text.remove_prefix(form.prefix.size());
  if (text.ends_with(form.suffix)) text.remove_suffix(form.suffix.size());
  return TrimBlanks(text);
}

void AppendWord(std::vector<std::uint8_t>& bytes, std::int64_t value) {
  bytes.resize(bytes.size() + sizeof(std::uint32_t));
  StoreU32(std::span(bytes).last(sizeof(std::uint32_t)), static_cast<std::uint32_t>(value),
           kHostByteOrder);
}

// False when the text is no number of the type.
bool AppendNumber(std::vector<std::uint8_t>& bytes, std::string_view text, const TypeRow& type) {
  if (type.layout == Layout::Pair) {
    const auto fraction = ParseFraction(text, type.range);
    if (fraction) AppendFraction(bytes, *fraction);
    return fraction.has_value();
  }
  const auto whole = ParseWhole(text, type.range);
  if (!whole) return false;
  if (type.layout == Layout::Word) {
    AppendWord(bytes, *whole);
  } else {
    bytes.push_back(static_cast<std::uint8_t>(*whole));
  }
  return true;
}

std::string WrongNumber(std::string_view text, const TypeRow& type) {
  const bool isPair = type.layout == Layout::Pair;
  return Concat({"'", text, "' is no ", isPair ? "" : "whole ", "number from ",
                 std::to_string(type.range.lowest), " to ", std::to_string(type.range.highest),
                 isPair ? ", such as 2.8 or 28/10" : ""});
}

std::string WrongCount(std::string_view text, const NumberForm& form) {
  const std::string fewest = std::to_string(form.fewest);
  if (form.most == 1) return Concat({"'", text, "' is more than one number"});
  const std::string to = form.most == form.fewest ? "" : " to " + std::to_string(form.most);
  return Concat({"'", text, "' is not ", fewest, to, " numbers separated by commas"});
}

}  // namespace

void AppendFraction(std::vector<std::uint8_t>& bytes, const Fraction& fraction) {
  AppendWord(bytes, fraction.numerator);
  AppendWord(bytes, fraction.denominator);
}

ParsedValue ParseNumbers(std::string_view text, TagType type, Decoder decoder) {
  const auto* row = FindInTable(kTypes, [&](const TypeRow& r) { return r.id == type; });
  if (row == nullptr) return WrongValue("values of this type are not written");
  const NumberForm& form = FormOf(decoder);
  const auto parts = SplitParts(text, ',');
  if (parts.size() < form.fewest || parts.size() > form.most) {
    return WrongValue(WrongCount(text, form));
  }
  ParsedValue value;
  for (const std::string_view part : parts) {
    if (!AppendNumber(value.bytes, WithoutUnit(part, form), *row)) {
      return WrongValue(WrongNumber(part, *row));
    }
  }
  return value;
}

std::uint32_t RecordTypeOf(TagType type) {
  const auto* row = FindInTable(kTypes, [&](const TypeRow& r) { return r.id == type; });
  return row != nullptr ? row->recordType : static_cast<std::uint32_t>(LMD_RECORD_ASCII);
}

}  // namespace tool
