#ifndef LUMIDEX_TOOL_VALUES_DECODERS_H_
#define LUMIDEX_TOOL_VALUES_DECODERS_H_

// What turns stored values into words. Each has the form of a Decoder and returns an empty text for
// a value that it cannot read.

#include <string>

#include "values/Value.h"
#include "values/Words.h"

namespace tool {

// The word of a code with the code behind it: "pattern (5)".
template <const auto& words>
std::string InWords(const Value& value) {
  const double number = NumberAt(value.entry);
  for (const auto& row : words) {
    if (static_cast<double>(row.id) == number) {
      return std::string(row.word) + " (" + std::to_string(row.id) + ")";
    }
  }
  return {};
}

// The same for a code that stands in a single byte of an UNDEFINED value.
template <const auto& words>
std::string ByteInWords(const Value& value) {
  const auto bytes = TagBytes(value.entry);
  for (const auto& row : words) {
    if (!bytes.empty() && row.id == bytes[0]) {
      return std::string(row.word) + " (" + std::to_string(row.id) + ")";
    }
  }
  return {};
}

// --- Exposure and optics (ExposureDecoders.cpp) ---
std::string ExposureSeconds(const Value& value);       // 1/250 s
std::string ShutterApex(const Value& value);           // 1/256 s (APEX 8)
std::string FNumber(const Value& value);               // f/2.8
std::string ApertureApex(const Value& value);          // f/4 (APEX 4)
std::string ExposureValue(const Value& value);         // +0.33 EV
std::string Millimetres(const Value& value);           // 50 mm
std::string Metres(const Value& value);                // 2.5 m
std::string IsoSpeed(const Value& value);              // ISO 100
std::string Times(const Value& value);                 // 1.5x
std::string ZoomRatio(const Value& value);             // 1.5x, or not used
std::string Brightness(const Value& value);            // 5.2 EV
std::string LensSpecification(const Value& value);     // 24-70 mm f/2.8
std::string Flash(const Value& value);                 // fired, return light detected
std::string Resolution(const Value& value);            // 72 per inch
std::string FocalPlaneResolution(const Value& value);  // 3443.9 per inch
std::string SubjectArea(const Value& value);           // circle at 100, 200 with diameter 50
std::string Celsius(const Value& value);               // 21.5 °C
std::string Percent(const Value& value);               // 45 %
std::string Hectopascals(const Value& value);          // 1013 hPa
std::string Degrees(const Value& value);               // -12.5°

// --- Texts and versions (TextDecoders.cpp) ---
std::string DateAndTime(const Value& value);     // 2008-05-30 15:56:01
std::string DigitVersion(const Value& value);    // "0232" is 2.32
std::string ByteVersion(const Value& value);     // 1.4.0.0
std::string Components(const Value& value);      // Y Cb Cr
std::string Comment(const Value& value);         // a text behind its character code
std::string WideBytes(const Value& value);       // UTF-16 in a value of bytes
std::string CopyrightParts(const Value& value);  // photographer; editor
std::string Characters(const Value& value);      // text in a value of bytes
std::string ByteTotal(const Value& value);       // 1024 bytes
std::string Lines(const Value& value);           // first; second; third

// --- GPS (GpsDecoders.cpp) ---
std::string Latitude(const Value& value);  // 54° 59' 22.8" N (54.989667)
std::string Longitude(const Value& value);
std::string DestinationLatitude(const Value& value);
std::string DestinationLongitude(const Value& value);
std::string Altitude(const Value& value);   // 120.5 m above sea level
std::string ClockTime(const Value& value);  // 14:58:24 UTC
std::string GpsDate(const Value& value);    // 2008-05-30
std::string Speed(const Value& value);      // 12 km/h
std::string Track(const Value& value);      // 123.4° (true north)
std::string ImageDirection(const Value& value);
std::string Bearing(const Value& value);
std::string Distance(const Value& value);  // 3.2 km

// The position of a GPS table in degrees, or an empty text when it does not hold one.
std::string Position(const TagMap& gps);  // 54.989667 N 1.914167 W

// --- IPTC (TextDecoders.cpp) ---
std::string CharacterSet(const Value& value);   // UTF-8
std::string RecordVersion(const Value& value);  // 2

// --- ICC (IccDecoders.cpp) ---
std::string IccVersion(const Value& value);  // 2.1.0
std::string IccDate(const Value& value);     // 1998-02-09 06:49:00
std::string IccIntent(const Value& value);   // perceptual (0)
std::string IccXyz(const Value& value);      // X 0.9642 Y 1 Z 0.8249
std::string IccCurve(const Value& value);    // gamma 2.2
std::string IccFlags(const Value& value);
std::string IccAttributes(const Value& value);
std::string IccProfileId(const Value& value);
std::string IccClass(const Value& value);  // display ("mntr")

// --- XMP (XmpDecoders.cpp) ---
std::string Stars(const Value& value);              // 3 of 5
std::string TextDegrees(const Value& value);        // 12.5°
std::string TextExposureValue(const Value& value);  // 1/3 is +0.33 EV
std::string TextShutterApex(const Value& value);
std::string TextApertureApex(const Value& value);
std::string TextMillimetres(const Value& value);
std::string TextExposureMode(const Value& value);
std::string TextMarked(const Value& value);    // True: protected by copyright
std::string PersonRegion(const Value& value);  // name, rectangle, type

}  // namespace tool

#endif  // LUMIDEX_TOOL_VALUES_DECODERS_H_
