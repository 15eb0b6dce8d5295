#include "merge/MergeConversions.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>
#include <string>
#include <vector>

#include "base/ByteOrder.h"
#include "base/Numbers.h"
#include "base/TypeSizes.h"
#include "base/WideText.h"
#include "makernote/LensText.h"
#include "merge/Apex.h"
#include "merge/Rational.h"
#include "merge/SensorFormatFactor.h"
#include "xmp/TextConversion.h"

namespace {

constexpr std::uint16_t kMaxIso = 0xFFFF;

void SetShort(MergeTarget& target, std::uint16_t value) {
  target.Set(TYPE_SHORT, std::bit_cast<std::array<std::uint8_t, 2>>(value));
}

void SetRational(MergeTarget& target, const Rational& value, std::uint32_t type = TYPE_RATIONAL) {
  target.Set(type, std::bit_cast<std::array<std::uint8_t, 8>>(value));
}

// A text of UTF-16 up to its first zero, in the ANSI code page.
std::string AnsiText(const MergeSource& source) {
  return ToAnsiString(LoadWideText(source.bytes));
}

void SetText(MergeTarget& target, const std::string& text) {
  const std::span<const char> withFinalZero(text.c_str(), text.size() + 1);
  std::vector<std::uint8_t> bytes(withFinalZero.begin(), withFinalZero.end());
  target.Set(TYPE_ASCII, bytes);
}

// By design signed, although a maker note's own values under these keys are unsigned.
void SplitRationals(const MergeSource& source, MergeTarget& target, std::size_t first) {
  SetRational(target, LoadRational(source.bytes, first), TYPE_SRATIONAL);
  SetRational(target, LoadRational(source.bytes, first + 1), TYPE_SRATIONAL);
}

}  // namespace

void CopyValue(const MergeSource& source, MergeTarget& target) {
  target.Set(source.type, source.bytes);
}

void CapIso(const MergeSource& source, MergeTarget& target) {
  const auto iso = HostValue<std::uint32_t>(source.bytes);
  SetShort(target, static_cast<std::uint16_t>(std::min<std::uint32_t>(iso, kMaxIso)));
}

void CopyLargeIso(const MergeSource& source, MergeTarget& target) {
  if (source.companion == kMaxIso) target.Set(TYPE_LONG, source.bytes);
}

void CopyIsoAsShort(const MergeSource& source, MergeTarget& target) {
  target.Set(TYPE_SHORT, source.bytes);
}

void DivideRational(const MergeSource& source, MergeTarget& target) {
  if (source.type != TYPE_RATIONAL || source.bytes.empty()) return;
  const auto [numerator, denominator] = LoadRational(source.bytes);
  SetShort(target, static_cast<std::uint16_t>(denominator == 0 ? 0 : numerator / denominator));
}

void ReadIsoText(const MergeSource& source, MergeTarget& target) {
  const std::string text = AnsiText(source);
  if (!text.empty()) SetShort(target, static_cast<std::uint16_t>(ParseInteger(text)));
}

void ConvertShutter(const MergeSource& source, MergeTarget& target) {
  const Rational value = LoadRational(source.bytes);
  if (value.denominator != 0) SetRational(target, InMillionths(ExposureTime(value)));
}

void ConvertShutterText(const MergeSource& source, MergeTarget& target) {
  const auto value = ParseRationalText(AnsiText(source));
  if (value) SetRational(target, InMillionths(ExposureTime(*value)));
}

void ConvertApertureText(const MergeSource& source, MergeTarget& target) {
  const auto value = ParseRationalText(AnsiText(source));
  if (value) SetRational(target, InMillionths(FNumber(*value)));
}

void ReadRational(const MergeSource& source, MergeTarget& target) {
  const auto value = ParseRationalText(AnsiText(source));
  if (value) SetRational(target, *value);
}

void ReadSignedRational(const MergeSource& source, MergeTarget& target) {
  const auto value = ParseRationalText(AnsiText(source));
  if (value) SetRational(target, *value, TYPE_SRATIONAL);
}

void ReadText(const MergeSource& source, MergeTarget& target) {
  if (!source.bytes.empty()) SetText(target, AnsiText(source));
}

void DescribeLens(const MergeSource& source, MergeTarget& target) {
  std::array<std::uint32_t, 8> numbers;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    numbers[i] = HostValue<std::uint32_t>(source.bytes, i);
  }
  const std::string text = FormatLensText(numbers);
  if (!text.empty()) SetText(target, text);
}

void SplitFocalLengths(const MergeSource& source, MergeTarget& target) {
  SplitRationals(source, target, 0);
}

void SplitFNumbers(const MergeSource& source, MergeTarget& target) {
  SplitRationals(source, target, 2);
}

void ComputeFocalFactor(const MergeSource& source, MergeTarget& target) {
  const auto factor = FactorFromFocalLengths(LoadRational(source.bytes), source.companion);
  if (factor) SetRational(target, InMillionths(*factor));
}

void ComputeResolutionFactor(const MergeSource& source, MergeTarget& target) {
  const auto factor = FactorFromResolution(LoadRational(source.bytes), source.companion);
  if (factor) SetRational(target, InMillionths(*factor));
}
