#include "write/SpecialForms.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <string>

#include "Tables.h"
#include "Text.h"
#include "base/ByteOrder.h"
#include "values/Decoders.h"
#include "write/NumberText.h"
#include "write/NumberValues.h"

namespace tool {
namespace {

constexpr std::size_t kDateLength = 10;

// The character codes in front of a comment (EXIF 2.32, 0x9286), 8 bytes each.
constexpr std::string_view kAsciiCode("ASCII\0\0\0", 8);
constexpr std::string_view kUnicodeCode("UNICODE\0", 8);

ParsedValue TextValue(std::string_view text) {
  return {{text.begin(), text.end()}, {}};
}

ParsedValue ZeroEndedText(std::string_view text) {
  ParsedValue value = TextValue(text);
  value.bytes.push_back(0);
  return value;
}

// The two or four digits at a place of a text that has its form.
int DigitsAt(std::string_view text, std::size_t position, std::size_t count) {
  return static_cast<int>(ParseWhole(text.substr(position, count), {0, 9999}).value_or(0));
}

// A day of the calendar, with colons as in a file or with hyphens as in print.
bool IsDate(std::string_view text) {
  if (!HasForm(text, "0000:00:00") && !HasForm(text, "0000-00-00")) return false;
  const std::chrono::year_month_day day{
      std::chrono::year(DigitsAt(text, 0, 4)),
      std::chrono::month(static_cast<unsigned>(DigitsAt(text, 5, 2))),
      std::chrono::day(static_cast<unsigned>(DigitsAt(text, 8, 2)))};
  return day.ok();
}

bool IsTime(std::string_view text) {
  return HasForm(text, "00:00:00") && DigitsAt(text, 0, 2) < 24 && DigitsAt(text, 3, 2) < 60 &&
         DigitsAt(text, 6, 2) < 60;
}

std::string WithColons(std::string_view date) {
  std::string text(date);
  std::replace(text.begin(), text.end(), '-', ':');
  return text;
}

ParsedValue DateAndTimeValue(std::string_view text) {
  const std::string_view date = text.substr(0, kDateLength);
  const std::string_view rest = text.substr(date.size());
  if (!IsDate(date) || !rest.starts_with(' ') || !IsTime(rest.substr(1))) {
    return WrongValue(Concat({"'", text, "' is no date and time, such as 2024:05:01 12:00:00"}));
  }
  return ZeroEndedText(WithColons(text));
}

ParsedValue DateValue(std::string_view text) {
  if (!IsDate(text)) return WrongValue(Concat({"'", text, "' is no date, such as 2024:05:01"}));
  return ZeroEndedText(WithColons(text));
}

// "12:34:56.5": three rationals, the seconds below 60.
ParsedValue ClockValue(std::string_view text) {
  const auto parts = SplitParts(text, text.find(':') != std::string_view::npos ? ':' : ',');
  const auto wrong = [&] {
    return WrongValue(Concat({"'", text, "' is no time of the day, such as 12:34:56"}));
  };
  if (parts.size() != 3) return wrong();
  const auto hours = ParseWhole(parts[0], {0, 23});
  const auto minutes = ParseWhole(parts[1], {0, 59});
  const auto seconds = ParseFraction(parts[2], {0, 0xFFFFFFFF});
  if (!hours || !minutes || !seconds || seconds->numerator >= 60 * seconds->denominator) {
    return wrong();
  }
  ParsedValue value;
  AppendFraction(value.bytes, {*hours, 1});
  AppendFraction(value.bytes, {*minutes, 1});
  AppendFraction(value.bytes, *seconds);
  return value;
}

// The four digits of a file, or the numbers that they mean: "0232" is 2.32, "0230" is 2.3.
ParsedValue DigitVersionValue(std::string_view text) {
  if (HasForm(text, "0000")) return TextValue(text);
  if (HasForm(text, "0.00")) return TextValue(Concat({"0", text.substr(0, 1), text.substr(2)}));
  if (HasForm(text, "0.0")) return TextValue(Concat({"0", text.substr(0, 1), text.substr(2), "0"}));
  return WrongValue(Concat({"'", text, "' is no version, such as 0232 or 2.32"}));
}

// "2.3.0.0": a byte each.
ParsedValue ByteVersionValue(std::string_view text) {
  const auto parts = SplitParts(text, text.find('.') != std::string_view::npos ? '.' : ',');
  ParsedValue value;
  for (const std::string_view part : parts) {
    const auto number = ParseWhole(part, {0, 0xFF});
    if (number) value.bytes.push_back(static_cast<std::uint8_t>(*number));
  }
  if (parts.size() == 4 && value.bytes.size() == parts.size()) return value;
  return WrongValue(Concat({"'", text, "' is no version, such as 2.3.0.0"}));
}

// ASCII where that is enough, else UTF-16, in the byte order of the directories that the writer
// makes.
ParsedValue CommentValue(std::string_view text) {
  const bool isAscii = std::all_of(text.begin(), text.end(),
                                   [](char c) { return static_cast<std::uint8_t>(c) < 0x80; });
  if (isAscii) return TextValue(Concat({kAsciiCode, text}));
  ParsedValue value = TextValue(kUnicodeCode);
  for (const WCHAR unit : WideFromUtf8(text)) {
    value.bytes.resize(value.bytes.size() + sizeof(std::uint16_t));
    StoreU16(std::span(value.bytes).last(sizeof(std::uint16_t)), static_cast<std::uint16_t>(unit),
             ByteOrder::LittleEndian);
  }
  return value;
}

// An angle has no sign: the reference beside it, a tag of its own, says on which side it lies.
ParsedValue AngleValue(std::string_view text, int bound, Decoder decoder) {
  if (text.find(',') != std::string_view::npos) return ParseNumbers(text, TYPE_RATIONAL, decoder);
  Coordinate coordinate = ParseCoordinate(text, bound);
  if (!coordinate.isNegative) return std::move(coordinate.angle);
  return WrongValue(Concat({"'", text, "' is negative; the side is a matter of the reference"}));
}

ParsedValue LatitudeValue(std::string_view text) {
  return AngleValue(text, kLargestLatitude, Latitude);
}

ParsedValue LongitudeValue(std::string_view text) {
  return AngleValue(text, kLargestLongitude, Longitude);
}

struct FormRow {
  Decoder decoder;
  FormParser parse;
};

// clang-format off
constexpr auto kForms = std::to_array<FormRow>({
    {DateAndTime,          DateAndTimeValue},
    {GpsDate,              DateValue},
    {ClockTime,            ClockValue},
    {DigitVersion,         DigitVersionValue},
    {ByteVersion,          ByteVersionValue},
    {Comment,              CommentValue},
    {Latitude,             LatitudeValue},
    {DestinationLatitude,  LatitudeValue},
    {Longitude,            LongitudeValue},
    {DestinationLongitude, LongitudeValue},
});
// clang-format on

// Millionths of a second of arc, less than the breadth of a hair on the ground.
constexpr std::int64_t kPerSecond = 1'000'000;
constexpr std::int64_t kPerMinute = 60 * kPerSecond;
constexpr std::int64_t kPerDegree = 60 * kPerMinute;

// In lowest decimal terms: 30240000 millionths are 3024/100.
Fraction Shortened(Fraction fraction) {
  while (fraction.denominator > 1 && fraction.numerator % 10 == 0) {
    fraction = {fraction.numerator / 10, fraction.denominator / 10};
  }
  return fraction;
}

}  // namespace

FormParser FindSpecialForm(Decoder decoder) {
  const auto* row = FindInTable(kForms, [&](const FormRow& r) { return r.decoder == decoder; });
  return row != nullptr ? row->parse : nullptr;
}

Coordinate ParseCoordinate(std::string_view text, int bound) {
  // Seven decimals of 180 degrees; the product below stays in 64 bits.
  constexpr NumberRange kRange = {-1'800'000'000, 1'800'000'000};
  const auto degrees = ParseFraction(text, kRange);
  if (!degrees || degrees->denominator == 0 ||
      std::abs(degrees->numerator) > bound * degrees->denominator) {
    const std::string limit = std::to_string(bound);
    return {WrongValue(Concat(
                {"'", text, "' is no angle from -", limit, " to ", limit, " in decimal degrees"})),
            false};
  }
  const std::int64_t scaled = std::abs(degrees->numerator) * kPerDegree;
  const std::int64_t size = (scaled + degrees->denominator / 2) / degrees->denominator;
  Coordinate coordinate;
  coordinate.isNegative = degrees->numerator < 0;
  AppendFraction(coordinate.angle.bytes, {size / kPerDegree, 1});
  AppendFraction(coordinate.angle.bytes, {size % kPerDegree / kPerMinute, 1});
  AppendFraction(coordinate.angle.bytes, Shortened({size % kPerMinute, kPerSecond}));
  return coordinate;
}

}  // namespace tool
