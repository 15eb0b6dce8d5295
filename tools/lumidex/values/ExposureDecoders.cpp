#include <cmath>

#include "Text.h"
#include "base/ByteOrder.h"
#include "values/Decoders.h"
#include "values/ExposureText.h"

namespace tool {
namespace {

constexpr std::uint32_t kResolutionUnit = 0x0128;
constexpr std::uint32_t kFocalPlaneResolutionUnit = 0xA210;
constexpr double kCentimetreUnit = 3;

std::string WithUnit(const Value& value, int decimals, const char* unit) {
  const double number = NumberAt(value.entry);
  if (std::isnan(number)) return {};
  return Number(number, decimals) + unit;
}

// Inches unless the unit's own tag says centimetres (TIFF 6.0, section 8).
std::string PerUnit(const Value& value, std::uint32_t unitTag) {
  const double unit = NumberAt(value, unitTag);
  if (unit == 1) return WithUnit(value, 4, " (no unit)");
  return WithUnit(value, 4, unit == kCentimetreUnit ? " per cm" : " per inch");
}

// "24-70", or one number when both are the same.
std::string Range(double first, double last) {
  const std::string text = Number(first, 2);
  return first == last || std::isnan(last) ? text : Concat({text, "-", Number(last, 2)});
}

const char* ReturnedLight(std::uint32_t bits) {
  switch (bits >> 1 & 3) {
    case 2:
      return ", return light not detected";
    case 3:
      return ", return light detected";
    default:
      return "";
  }
}

const char* FlashMode(std::uint32_t bits) {
  switch (bits >> 3 & 3) {
    case 1:
      return ", always on";
    case 2:
      return ", always off";
    case 3:
      return ", auto";
    default:
      return "";
  }
}

}  // namespace

std::string SecondsText(double seconds) {
  if (std::isnan(seconds) || seconds < 0) return {};
  if (seconds == 0 || seconds >= 0.3) return Number(seconds, 2) + " s";
  return Concat({"1/", Number(1 / seconds, 1 / seconds < 10 ? 1 : 0), " s"});
}

std::string ShutterApexText(double apex) {
  if (std::isnan(apex) || std::fabs(apex) > 40) return {};
  return SecondsText(std::exp2(-apex)) + " (APEX " + Number(apex, 2) + ")";
}

std::string ApertureApexText(double apex) {
  if (std::isnan(apex) || std::fabs(apex) > 40) return {};
  return Concat({"f/", Number(std::exp2(apex / 2), 1), " (APEX ", Number(apex, 2), ")"});
}

std::string ExposureValueText(double steps) {
  if (std::isnan(steps)) return {};
  const std::string text = Number(steps, 2);
  return Concat({text != "0" && steps > 0 ? "+" : "", text, " EV"});
}

std::string ExposureSeconds(const Value& value) {
  return SecondsText(NumberAt(value.entry));
}
std::string ShutterApex(const Value& value) {
  return ShutterApexText(NumberAt(value.entry));
}
std::string ApertureApex(const Value& value) {
  return ApertureApexText(NumberAt(value.entry));
}
std::string ExposureValue(const Value& value) {
  return ExposureValueText(NumberAt(value.entry));
}

std::string FNumber(const Value& value) {
  const std::string number = WithUnit(value, 2, "");
  return number.empty() ? number : Concat({"f/", number});
}

std::string Millimetres(const Value& value) {
  return WithUnit(value, 2, " mm");
}
std::string Celsius(const Value& value) {
  return WithUnit(value, 2, " °C");
}
std::string Percent(const Value& value) {
  return WithUnit(value, 2, " %");
}
std::string Hectopascals(const Value& value) {
  return WithUnit(value, 2, " hPa");
}
std::string Degrees(const Value& value) {
  return WithUnit(value, 4, "°");
}
std::string Times(const Value& value) {
  return WithUnit(value, 2, "x");
}

std::string Brightness(const Value& value) {
  return WithUnit(value, 2, " EV");
}

// A numerator of 0 says that there was no digital zoom (EXIF 2.32, 0xA404).
std::string ZoomRatio(const Value& value) {
  const bool isUnused = HostValue<std::uint32_t>(TagBytes(value.entry)) == 0;
  return isUnused ? "not used" : Times(value);
}

// A numerator of all ones stands for infinity, 0 for an unknown distance (EXIF 2.32, 0x9206).
std::string Metres(const Value& value) {
  constexpr std::uint32_t kInfinity = 0xFFFFFFFF;
  if (HostValue<std::uint32_t>(TagBytes(value.entry)) == kInfinity) return "infinity";
  return NumberAt(value.entry) == 0 ? "unknown" : WithUnit(value, 3, " m");
}

std::string IsoSpeed(const Value& value) {
  if (std::isnan(NumberAt(value.entry))) return {};
  return Concat({"ISO ", JoinNumbers(value.entry, 0)});
}

std::string LensSpecification(const Value& value) {
  const double shortest = NumberAt(value.entry, 0);
  const double longest = NumberAt(value.entry, 1);
  if (ElementCount(value.entry) != 4 || std::isnan(shortest)) return {};
  const double widest = NumberAt(value.entry, 2);
  const std::string focal = Range(shortest, longest) + " mm";
  return std::isnan(widest) ? focal : focal + " f/" + Range(widest, NumberAt(value.entry, 3));
}

// EXIF 2.32, 0x9209: bit 0 fired, bits 1-2 return light, 3-4 mode, 5 no flash, 6 red-eye.
std::string Flash(const Value& value) {
  const double number = NumberAt(value.entry);
  if (std::isnan(number) || number < 0 || number > 0x7F) return {};
  const auto bits = static_cast<std::uint32_t>(number);
  if ((bits & 0x20) != 0) return Concat({"no flash function (", std::to_string(bits), ")"});
  return std::string((bits & 1) != 0 ? "fired" : "did not fire") + ReturnedLight(bits) +
         FlashMode(bits) + ((bits & 0x40) != 0 ? ", red-eye reduction" : "") + " (" +
         std::to_string(bits) + ")";
}

std::string Resolution(const Value& value) {
  return PerUnit(value, kResolutionUnit);
}

std::string FocalPlaneResolution(const Value& value) {
  return PerUnit(value, kFocalPlaneResolutionUnit);
}

// A point, a circle or a rectangle, by the number of values (EXIF 2.32, 0x9214).
std::string SubjectArea(const Value& value) {
  const std::size_t count = ElementCount(value.entry);
  if (!IsNumeric(value.entry) || count < 2 || count > 4) return {};
  const auto number = [&](std::size_t i) { return Number(NumberAt(value.entry, i), 0); };
  const std::string place = number(0) + ", " + number(1);
  if (count == 2) return Concat({"point at ", place});
  if (count == 3) return Concat({"circle around ", place, ", diameter ", number(2)});
  return Concat({"rectangle around ", place, ", ", number(2), " x ", number(3)});
}

}  // namespace tool
