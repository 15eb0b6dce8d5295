#include <charconv>
#include <limits>
#include <string_view>

#include "Text.h"
#include "values/Decoders.h"
#include "values/ExposureText.h"

namespace tool {
namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

double DecimalNumber(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  double number = 0;
  const char* last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, number, std::chars_format::fixed);
  return error == std::errc() && end == last ? number : kNoNumber;
}

// "8/1" or "12.5" as a number; not-a-number for any other text.
double TextNumber(const Value& value) {
  const std::string text = WithoutBlanksAround(TextOf(value.entry));
  const auto slash = text.find('/');
  if (slash == std::string::npos) return DecimalNumber(text);
  const double denominator = DecimalNumber(std::string_view(text).substr(slash + 1));
  if (denominator == 0) return kNoNumber;
  return DecimalNumber(std::string_view(text).substr(0, slash)) / denominator;
}

std::string WithUnit(const Value& value, int decimals, const char* unit) {
  const double number = TextNumber(value);
  return number == number ? Number(number, decimals) + unit : std::string();
}

}  // namespace

// XMP part 1: -1 means rejected, 0 unrated.
std::string Stars(const Value& value) {
  const double stars = TextNumber(value);
  if (stars == -1) return "rejected (-1)";
  if (stars == 0) return "unrated (0)";
  return stars > 0 && stars <= 5 ? Number(stars, 1) + " of 5" : std::string();
}

std::string TextDegrees(const Value& value) {
  return WithUnit(value, 4, "°");
}
std::string TextMillimetres(const Value& value) {
  return WithUnit(value, 2, " mm");
}
std::string TextExposureValue(const Value& value) {
  return ExposureValueText(TextNumber(value));
}
std::string TextShutterApex(const Value& value) {
  return ShutterApexText(TextNumber(value));
}
std::string TextApertureApex(const Value& value) {
  return ApertureApexText(TextNumber(value));
}

std::string TextExposureMode(const Value& value) {
  const double number = TextNumber(value);
  const auto* row = FindInTable(kExposureModes, [&](const Word& r) { return r.id == number; });
  if (row == nullptr) return {};
  return std::string(row->word) + " (" + std::to_string(row->id) + ")";
}

std::string TextMarked(const Value& value) {
  const std::string text = TextOf(value.entry);
  if (text == "True") return "protected by copyright (True)";
  return text == "False" ? "public domain (False)" : std::string();
}

// Rectangle, name and type, one line each.
std::string PersonRegion(const Value& value) {
  const std::string text = TextOf(value.entry);
  const auto first = text.find('\n');
  const auto second = first == std::string::npos ? first : text.find('\n', first + 1);
  if (second == std::string::npos) return {};
  const std::string name = text.substr(first + 1, second - first - 1);
  const std::string type = text.substr(second + 1);
  const std::string kind = type.empty() ? std::string() : Concat({" [", type, "]"});
  return Concat({name.empty() ? "(no name)" : name, kind, " in ", text.substr(0, first)});
}

}  // namespace tool
