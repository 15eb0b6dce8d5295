#include <algorithm>
#include <array>
#include <cmath>

#include "Text.h"
#include "base/ByteCursor.h"
#include "values/Decoders.h"

namespace tool {
namespace {

// A profile's fields are kept as they stand in the profile, big-endian (ICC.1, section 4).
ByteCursor CursorOf(const Value& value) {
  return {TagBytes(value.entry), ByteOrder::BigEndian};
}

double ReadFixed16(ByteCursor& cursor) {
  return static_cast<std::int32_t>(cursor.ReadU32()) / 65536.0;
}

std::string TwoDigits(std::uint16_t number) {
  return Concat({number < 10 ? "0" : "", std::to_string(number)});
}

struct Signature {
  std::string_view signature;
  const char* meaning;
};

// clang-format off
constexpr std::array<Signature, 7> kDeviceClasses = {{
    {"scnr", "input device"},
    {"mntr", "display"},
    {"prtr", "output device"},
    {"link", "device link"},
    {"spac", "colour space"},
    {"abst", "abstract"},
    {"nmcl", "named colours"},
}};
// clang-format on

}  // namespace

// ICC.1, section 7.2.4: the major version, then minor and bug-fix version as two half bytes.
std::string IccVersion(const Value& value) {
  const auto bytes = TagBytes(value.entry);
  if (bytes.size() != 4) return {};
  return std::to_string(bytes[0]) + "." + std::to_string(bytes[1] >> 4) + "." +
         std::to_string(bytes[1] & 0x0F);
}

std::string IccDate(const Value& value) {
  if (TagBytes(value.entry).size() != 12) return {};
  ByteCursor cursor = CursorOf(value);
  std::string out = std::to_string(cursor.ReadU16());
  for (const char* separator : {"-", "-", " ", ":", ":"}) {
    out += Concat({separator, TwoDigits(cursor.ReadU16())});
  }
  return out;
}

std::string IccIntent(const Value& value) {
  ByteCursor cursor = CursorOf(value);
  const std::uint32_t intent = cursor.ReadU32();
  const auto* row = FindInTable(kRenderingIntents, [&](const Word& r) { return r.id == intent; });
  if (row == nullptr || cursor.WasShort()) return {};
  return std::string(row->word) + " (" + std::to_string(intent) + ")";
}

std::string IccXyz(const Value& value) {
  ByteCursor cursor = CursorOf(value);
  std::string out;
  for (const char* name : {"X ", " Y ", " Z "})
    out += Concat({name, Number(ReadFixed16(cursor), 4)});
  return cursor.WasShort() ? std::string() : out;
}

// The curveType of ICC.1: a count, then as many points; a single one is a gamma value of 8.8 bits.
// A parametric curve has no such count, and its own type is not kept.
std::string IccCurve(const Value& value) {
  ByteCursor cursor = CursorOf(value);
  const std::uint32_t count = cursor.ReadU32();
  if (cursor.WasShort() || std::uint64_t{count} * 2 > cursor.Remaining()) return ByteTotal(value);
  if (count == 0) return "linear";
  if (count == 1) return Concat({"gamma ", Number(cursor.ReadU16() / 256.0, 2)});
  return Concat({"curve of ", std::to_string(count), " points"});
}

// ICC.1, section 7.2.11.
std::string IccFlags(const Value& value) {
  ByteCursor cursor = CursorOf(value);
  const std::uint32_t flags = cursor.ReadU32();
  if (cursor.WasShort()) return {};
  return std::string((flags & 1) != 0 ? "embedded" : "not embedded") +
         ((flags & 2) != 0 ? ", for its image alone" : ", usable alone");
}

// ICC.1, section 7.2.14: the low bits of the 64.
std::string IccAttributes(const Value& value) {
  ByteCursor cursor = CursorOf(value);
  cursor.Skip(4);
  const std::uint32_t bits = cursor.ReadU32();
  if (cursor.WasShort()) return {};
  return std::string((bits & 1) != 0 ? "transparency" : "reflective") +
         ((bits & 2) != 0 ? ", matte" : ", glossy") +
         ((bits & 4) != 0 ? ", negative" : ", positive") +
         ((bits & 8) != 0 ? ", black and white" : ", colour");
}

std::string IccProfileId(const Value& value) {
  const auto bytes = TagBytes(value.entry);
  const bool isSet = std::any_of(bytes.begin(), bytes.end(), [](std::uint8_t b) { return b != 0; });
  return isSet ? HexBytes(bytes) : "not calculated";
}

std::string IccClass(const Value& value) {
  const std::string text = TextOf(value.entry);
  const auto* row =
      FindInTable(kDeviceClasses, [&](const Signature& r) { return text == r.signature; });
  return row != nullptr ? std::string(row->meaning) + " (" + text + ")" : std::string();
}

}  // namespace tool
