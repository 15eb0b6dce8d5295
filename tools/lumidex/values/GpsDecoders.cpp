#include <array>
#include <cmath>

#include "Text.h"
#include "base/ByteOrder.h"
#include "values/Decoders.h"

namespace tool {
namespace {

// The tags of the GPS directory that say how a neighbour is to be read (EXIF 2.32, section 4.6.6).
constexpr std::uint32_t kLatitudeRef = 1;
constexpr std::uint32_t kLatitude = 2;
constexpr std::uint32_t kLongitudeRef = 3;
constexpr std::uint32_t kLongitude = 4;
constexpr std::uint32_t kAltitudeRef = 5;
constexpr std::uint32_t kSpeedRef = 12;
constexpr std::uint32_t kTrackRef = 14;
constexpr std::uint32_t kImageDirectionRef = 16;
constexpr std::uint32_t kDestinationLatitudeRef = 19;
constexpr std::uint32_t kDestinationLongitudeRef = 21;
constexpr std::uint32_t kBearingRef = 23;
constexpr std::uint32_t kDistanceRef = 25;

struct Letter {
  std::string_view letter;
  const char* meaning;
};

constexpr std::array<Letter, 3> kSpeedUnits = {{{"K", " km/h"}, {"M", " mph"}, {"N", " knots"}}};
constexpr std::array<Letter, 3> kDistanceUnits = {
    {{"K", " km"}, {"M", " miles"}, {"N", " nautical miles"}}};
constexpr std::array<Letter, 2> kNorths = {{{"T", "° (true north)"}, {"M", "° (magnetic north)"}}};

template <class Table>
std::string WithLetter(const Value& value, std::uint32_t ref, const Table& table,
                       const char* standard) {
  const double number = NumberAt(value.entry);
  if (std::isnan(number)) return {};
  const std::string letter = TextOf(value, ref);
  const auto* row = FindInTable(table, [&](const Letter& r) { return letter == r.letter; });
  return Number(number, 2) + (row != nullptr ? row->meaning : standard);
}

// Degrees, minutes and seconds, of which the later ones may be missing, as degrees.
double Angle(const TagEntry& entry) {
  double angle = NumberAt(entry, 0);
  double part = 60;
  for (std::size_t i = 1; i < 3; ++i, part *= 60) {
    const double number = NumberAt(entry, i);
    if (!std::isnan(number)) angle += number / part;
  }
  return angle;
}

// Rounded as a whole, so that 60 seconds become a minute.
std::string DegreesMinutesSeconds(double angle) {
  const auto hundredths = std::llround(angle * 360000);
  return Concat({std::to_string(hundredths / 360000), "° ", std::to_string(hundredths / 6000 % 60),
                 "' ", Number(static_cast<double>(hundredths % 6000) / 100, 2), "\""});
}

std::string Coordinate(const Value& value, std::uint32_t ref) {
  const double angle = Angle(value.entry);
  if (std::isnan(angle) || angle < 0 || angle > 360) return {};
  const std::string letter = TextOf(value, ref);
  const double signedAngle = letter == "S" || letter == "W" ? -angle : angle;
  return Concat({DegreesMinutesSeconds(angle), letter.empty() ? "" : " ", letter, " (",
                 Number(signedAngle, 6), ")"});
}

// "09.5": at least two digits before the point.
std::string TwoDigits(double number, int decimals) {
  return Concat({number < 10 ? "0" : "", Number(number, decimals)});
}

}  // namespace

std::string Latitude(const Value& value) {
  return Coordinate(value, kLatitudeRef);
}
std::string Longitude(const Value& value) {
  return Coordinate(value, kLongitudeRef);
}

std::string DestinationLatitude(const Value& value) {
  return Coordinate(value, kDestinationLatitudeRef);
}

std::string DestinationLongitude(const Value& value) {
  return Coordinate(value, kDestinationLongitudeRef);
}

std::string Altitude(const Value& value) {
  const double metres = NumberAt(value.entry);
  if (std::isnan(metres)) return {};
  const bool isBelow = NumberAt(value, kAltitudeRef) == 1;
  return Number(metres, 2) + (isBelow ? " m below sea level" : " m above sea level");
}

std::string ClockTime(const Value& value) {
  const double hours = NumberAt(value.entry, 0);
  const double minutes = NumberAt(value.entry, 1);
  const double seconds = NumberAt(value.entry, 2);
  const bool isClock = hours < 24 && minutes < 60 && seconds < 61;  // not with a missing number
  if (!isClock) return {};
  return TwoDigits(hours, 2) + ":" + TwoDigits(minutes, 2) + ":" + TwoDigits(seconds, 3) + " UTC";
}

std::string Speed(const Value& value) {
  return WithLetter(value, kSpeedRef, kSpeedUnits, " km/h");
}

std::string Track(const Value& value) {
  return WithLetter(value, kTrackRef, kNorths, "°");
}

std::string ImageDirection(const Value& value) {
  return WithLetter(value, kImageDirectionRef, kNorths, "°");
}

std::string Bearing(const Value& value) {
  return WithLetter(value, kBearingRef, kNorths, "°");
}

std::string Distance(const Value& value) {
  return WithLetter(value, kDistanceRef, kDistanceUnits, " km");
}

std::string Position(const TagMap& gps) {
  const TagEntry* latitude = gps.Find(kLatitude);
  const TagEntry* longitude = gps.Find(kLongitude);
  if (latitude == nullptr || longitude == nullptr) return {};
  const double north = Angle(*latitude);
  const double east = Angle(*longitude);
  if (std::isnan(north) || std::isnan(east)) return {};
  const auto letter = [&](std::uint32_t tag) {
    const TagEntry* entry = gps.Find(tag);
    return Concat({"°", entry != nullptr ? " " : "", entry != nullptr ? TextOf(*entry) : ""});
  };
  return Concat(
      {Number(north, 6), letter(kLatitudeRef), ", ", Number(east, 6), letter(kLongitudeRef)});
}

}  // namespace tool
