#include "Iptc.h"

#include <string_view>

namespace samples {
namespace {

using test::Bytes;
using test::Join;
using test::Text;
using test::U16;

constexpr std::uint8_t kEnvelopeRecord = 1;
constexpr std::uint8_t kApplicationRecord = 2;
constexpr std::uint8_t kCharacterSet = 90;
constexpr std::uint8_t kRecordVersion = 0;
constexpr std::uint8_t kKeywords = 25;
constexpr std::uint8_t kCity = 90;
constexpr std::uint8_t kCountryName = 101;
constexpr std::uint8_t kCaption = 120;

Bytes Dataset(std::uint8_t record, std::uint8_t number, const Bytes& data) {
  return Join({{0x1C, record, number}, U16(static_cast<std::uint16_t>(data.size())), data});
}

Bytes Value(std::uint8_t number, std::string_view text) {
  return Dataset(kApplicationRecord, number, Text(text));
}

Bytes Version() {
  return Dataset(kApplicationRecord, kRecordVersion, U16(4));
}

}  // namespace

Bytes Utf8Datasets() {
  return Join({
      Dataset(kEnvelopeRecord, kCharacterSet, Text("\x1B%G")),
      Version(),
      Value(kKeywords, "Seeufer"),
      Value(kKeywords, "Alpengl\xC3\xBChen"),
      Value(kKeywords, "\xE5\xB1\xB1"),
      Value(kCity, "Z\xC3\xBCrich"),
      Value(kCountryName, "Schweiz"),
      Value(kCaption,
            "Abend \xC3\xBC"
            "ber dem See \xE2\x80\x93 kurz nach Sonnenuntergang"),
  });
}

Bytes Latin1Datasets() {
  return Join({
      Version(),
      Value(kKeywords, "For\xEAt"),
      Value(kKeywords, "lac"),
      Value(kKeywords, "neige"),
      Value(kCity, "Gen\xE8ve"),
      Value(kCountryName, "Suisse"),
      Value(kCaption, "L'hiver au bord du lac, apr\xE8s la premi\xE8re neige"),
  });
}

}  // namespace samples
