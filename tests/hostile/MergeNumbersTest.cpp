// The merge over numbers that its formulas do not expect, step by step: zeros, the ends of 32 bits,
// quotients without an end, values of the wrong size and without any bytes.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Bounds.h"
#include "base/TypeSizes.h"
#include "exif/VxMetadata.h"
#include "support/LogCapture.h"
#include "support/StoreFile.h"

namespace test {
namespace {

constexpr std::uint32_t kMax = 0xFFFFFFFF;
constexpr std::uint32_t kMin = 0x80000000;  // the smallest signed number
constexpr std::uint32_t kMillion = 1'000'000;

// A value of a table.
struct Value {
  std::int32_t block;
  std::uint32_t key;
  std::uint32_t type;
  Bytes bytes;
};

Bytes HostWords(const std::vector<std::uint32_t>& words) {
  Bytes bytes;
  for (const std::uint32_t word : words) bytes = Join({bytes, U32(word, kHostByteOrder)});
  return bytes;
}

Bytes Short(std::uint16_t number) {
  return U16(number, kHostByteOrder);
}

Value Exif(std::uint32_t tag, std::uint32_t type, const Bytes& bytes) {
  return {BLOCK_EXIF, tag, type, bytes};
}
Value Ifd0(std::uint32_t tag, std::uint32_t type, const Bytes& bytes) {
  return {BLOCK_IFD0, tag, type, bytes};
}
Value Note(std::uint32_t key, std::uint32_t type, const Bytes& bytes) {
  return {BLOCK_MAKERNOTE_SUMMARY, key, type, bytes};
}
Value Xmp(std::uint32_t key, WideStringView text) {
  return {BLOCK_XMP, key, TYPE_WIDE_TEXT, WideBytes(text)};
}

// Merges the sources within the bound and looks at the values that they are to give. Nothing else
// may come of them.
void ExpectMerged(const std::vector<Value>& sources, const std::vector<Value>& expected) {
  const auto merge = [&] {
    auto store = std::make_unique<VxMetadata>();
    for (const auto& [block, key, type, bytes] : sources) {
      SetTagValue(store->m_fnGetBlock(block)->FindOrInsert(key), key, type, bytes, store->Memory());
    }
    EXPECT_EQ(store->MergeMetadata(), S_OK);
    return store;
  };
  const LogCapture log;
  const auto store = Bounded(kSmallInput, merge);
  std::size_t after = 0;
  for (std::int32_t block = BLOCK_IFD0; block <= kBlockCount; ++block) {
    after += store->m_fnGetBlock(block)->Count();
  }
  EXPECT_EQ(after, sources.size() + expected.size());
  for (const auto& [block, key, type, bytes] : expected) {
    EXPECT_EQ(Find(*store, block, key), (Stored{key, type, 0, Hex(bytes)}));
  }
  EXPECT_EQ(log.Lines().empty(), expected.empty());
}

void ExpectNothing(const std::vector<Value>& sources) {
  ExpectMerged(sources, {});
}

constexpr std::uint32_t kIso = 0x8827;
constexpr std::uint32_t kIndex = 0x8832;
constexpr std::uint32_t kTime = 0x829A;
constexpr std::uint32_t kFNumber = 0x829D;
constexpr std::uint32_t kFocalLength = 0x920A;
constexpr std::uint32_t kLensSpec = 0xA432;
constexpr std::uint32_t kDngLens = 0xC630;

Value Iso(std::uint16_t value) {
  return Exif(kIso, TYPE_SHORT, Short(value));
}
Value Time(std::uint32_t millionths) {
  return Exif(kTime, TYPE_RATIONAL, HostWords({millionths, kMillion}));
}
Value FNumber(std::uint32_t millionths) {
  return Exif(kFNumber, TYPE_RATIONAL, HostWords({millionths, kMillion}));
}
Value Factor(std::uint32_t millionths) {
  return Note(11, TYPE_RATIONAL, HostWords({millionths, kMillion}));
}

TEST(HostileMerge, IsoOfTheMakerNote) {
  const auto note = [](const Bytes& bytes) { return Note(7, TYPE_LONG, bytes); };
  ExpectMerged({note(HostWords({0}))}, {Iso(0)});
  ExpectMerged({note(HostWords({65'534}))}, {Iso(65'534)});
  // Above the cap the next step keeps the true value.
  ExpectMerged({note(HostWords({65'536}))},
               {Iso(65'535), Exif(kIndex, TYPE_LONG, HostWords({65'536}))});
  ExpectMerged({note(HostWords({kMax}))},
               {Iso(65'535), Exif(kIndex, TYPE_LONG, HostWords({kMax}))});
  ExpectMerged({note(HostWords({kMin}))},
               {Iso(65'535), Exif(kIndex, TYPE_LONG, HostWords({kMin}))});
  // Bytes that are not there count as 0.
  ExpectMerged({note({})}, {Iso(0)});
  ExpectMerged({note({0x64})}, {Iso(100)});
  ExpectMerged({note({0x01, 0x02, 0x03})},
               {Iso(65'535), Exif(kIndex, TYPE_LONG, {0x01, 0x02, 0x03})});
}

TEST(HostileMerge, LargeIsoBesideAShortOne) {
  const Value note = Note(7, TYPE_LONG, HostWords({kMax}));
  ExpectMerged({note, Iso(65'535)}, {Exif(kIndex, TYPE_LONG, HostWords({kMax}))});
  ExpectNothing({note, Iso(65'534)});
  ExpectNothing({note, Exif(kIso, TYPE_BYTE, {0xFF})});
  ExpectNothing({note, Exif(kIso, TYPE_SHORT, {})});
  ExpectMerged({note, Exif(kIso, TYPE_BYTE, {0xFF, 0xFF, 0xFF})},
               {Exif(kIndex, TYPE_LONG, HostWords({kMax}))});
  ExpectMerged({Note(7, TYPE_LONG, {}), Iso(65'535)}, {Exif(kIndex, TYPE_LONG, {})});
}

TEST(HostileMerge, IsoOfIfd0IsCopiedInAnySize) {
  for (const Bytes& bytes : {Bytes{}, Bytes{1}, Bytes{1, 2, 3}, Bytes(2'000, 9)}) {
    ExpectMerged({Ifd0(0x0017, TYPE_UNDEFINED, bytes)}, {Exif(kIso, TYPE_SHORT, bytes)});
  }
}

TEST(HostileMerge, ExposureIndexIsDividedWithoutASign) {
  const auto index = [](const Bytes& bytes) { return Ifd0(0x9215, TYPE_RATIONAL, bytes); };
  ExpectMerged({index(HostWords({400, 1}))}, {Iso(400)});
  ExpectMerged({index(HostWords({kMin, kMax}))},
               {Iso(0)});  // the smallest number by -1, were it signed
  ExpectMerged({index(HostWords({kMax, kMax}))}, {Iso(1)});
  ExpectMerged({index(HostWords({kMax, 1}))}, {Iso(0xFFFF)});
  ExpectMerged({index(HostWords({kMin, 1}))}, {Iso(0)});
  ExpectMerged({index(HostWords({65'536, 1}))}, {Iso(0)});
  ExpectMerged({index(HostWords({kMax, 0}))}, {Iso(0)});
  ExpectMerged({index(HostWords({0, 0}))}, {Iso(0)});
  ExpectMerged({index(HostWords({400}))}, {Iso(0)});
  ExpectMerged({index({5})}, {Iso(0)});
  ExpectNothing({index({})});
  ExpectNothing({Ifd0(0x9215, TYPE_SRATIONAL, HostWords({kMin, kMax}))});
}

TEST(HostileMerge, IsoTexts) {
  for (const auto& [text, iso] : {std::pair<WideStringView, std::uint16_t>{LMD_W("x"), 0},
                                  {LMD_W("-"), 0},
                                  {LMD_W("+"), 0},
                                  {LMD_W("-1"), 0xFFFF},
                                  {LMD_W("65536"), 0},
                                  {LMD_W("2147483647"), 0xFFFF},
                                  {LMD_W("2147483648"), 0xFFFF},
                                  {LMD_W("-2147483648"), 0},
                                  {LMD_W("-2147483649"), 0},
                                  {LMD_W("99999999999999999999999"), 0xFFFF},
                                  {LMD_W("0x10"), 0},
                                  {LMD_W(" \t100e9"), 100}}) {
    ExpectMerged({Xmp(0xAB13, text)}, {Iso(iso)});
  }
  ExpectMerged({Xmp(0xAB13, WideString(30'000, '9'))}, {Iso(0xFFFF)});
  ExpectNothing({Xmp(0xAB13, LMD_W(""))});
  ExpectNothing({{BLOCK_XMP, 0xAB13, TYPE_WIDE_TEXT, {}}});
  ExpectNothing({{BLOCK_XMP, 0xAB13, TYPE_WIDE_TEXT, {'1'}}});
}

TEST(HostileMerge, CopiesOfIfd0KeepWhatIsThere) {
  for (const std::uint32_t tag : {kTime, kFNumber, kFocalLength, 0x8822U, 0x9207U}) {
    for (const Bytes& bytes : {Bytes{}, Bytes{1}, HostWords({1, 0}), HostWords({kMin, kMax})}) {
      ExpectMerged({Ifd0(tag, TYPE_SRATIONAL, bytes)}, {Exif(tag, TYPE_SRATIONAL, bytes)});
    }
  }
}

TEST(HostileMerge, ShutterSpeedOfExif) {
  const auto shutter = [](const Bytes& bytes) { return Exif(0x9201, TYPE_SRATIONAL, bytes); };
  ExpectMerged({shutter(HostWords({0, 1}))}, {Time(kMillion)});
  ExpectMerged({shutter(HostWords({0, kMax}))}, {Time(kMillion)});
  ExpectMerged({shutter(HostWords({19, 1}))}, {Time(1)});
  ExpectMerged({shutter(HostWords({20, 1}))}, {Time(0)});
  ExpectMerged({shutter(HostWords({1'023, 1}))}, {Time(0)});
  ExpectMerged({shutter(HostWords({1'024, 1}))}, {Time(0)});  // one by infinity
  ExpectMerged({shutter(HostWords({kMax, 1}))}, {Time(0)});
  ExpectMerged({shutter(HostWords({1, kMax}))}, {Time(999'999)});
  ExpectMerged({shutter(HostWords({kMin, kMax}))}, {Time(707'106)});  // half a step
  ExpectMerged({shutter(HostWords({kMax, kMax}))}, {Time(500'000)});
  for (const Bytes& bytes :
       {HostWords({1, 0}), HostWords({0, 0}), HostWords({kMin, 0}), HostWords({8}), Bytes{},
        Bytes(7, 1), Bytes(9, 1), HostWords({8, 1, 8, 1})}) {
    ExpectNothing({shutter(bytes)});
  }
}

// What a rational text may be, for each of the four steps that read one.
const std::vector<WideStringView> kNoRationals = {
    LMD_W(""),    LMD_W("8"),   LMD_W("/"),    LMD_W("8/"),  LMD_W("8/0"),
    LMD_W("8/x"), LMD_W("8/-"), LMD_W("8/-0"), LMD_W("//8"), LMD_W("8/00000000000000000000000")};

TEST(HostileMerge, TextsThatAreNoRational) {
  for (const std::uint32_t key : {0xAB14U, 0xAB15U, 0xAB16U, 0xAB17U}) {
    for (const WideStringView text : kNoRationals) ExpectNothing({Xmp(key, text)});
    ExpectNothing({{BLOCK_XMP, key, TYPE_WIDE_TEXT, {}}});
    ExpectNothing({{BLOCK_XMP, key, TYPE_WIDE_TEXT, {'1'}}});
    ExpectNothing({Xmp(key, WideString(30'000, '8'))});
  }
}

TEST(HostileMerge, ShutterSpeedTexts) {
  for (const auto& [text, time] : {std::pair<WideStringView, std::uint32_t>{LMD_W("0/1"), kMillion},
                                   {LMD_W("/1"), kMillion},
                                   {LMD_W("x/1"), kMillion},
                                   {LMD_W(" 1 / 2"), 707'106},
                                   {LMD_W("1/2/0"), 707'106},
                                   {LMD_W("-1/1"), 0},
                                   {LMD_W("1/-1"), 999'999},
                                   {LMD_W("-2147483648/-1"), 707'106},
                                   {LMD_W("99999999999/1"), 0},
                                   {LMD_W("99999999999/99999999999"), 500'000}}) {
    ExpectMerged({Xmp(0xAB15, text)}, {Time(time)});
  }
}

TEST(HostileMerge, FNumberOfTheMakerNoteIsCopied) {
  for (const Bytes& bytes : {Bytes{}, Bytes{1}, HostWords({1, 0}), HostWords({kMin, kMax})}) {
    ExpectMerged({Note(9, TYPE_RATIONAL, bytes)}, {Exif(kFNumber, TYPE_RATIONAL, bytes)});
  }
}

TEST(HostileMerge, ApertureTexts) {
  // Whole steps up to ten have their number in a table; above 4294.967295 there is no room.
  for (const auto& [text, number] :
       {std::pair<WideStringView, std::uint32_t>{LMD_W("0/1"), 1'000'000},
        {LMD_W("0/-1"), 1'000'000},
        {LMD_W("10/1"), 32'000'000},
        {LMD_W("11/1"), 45'267'661},
        {LMD_W("24/1"), 4'098'533'581},
        {LMD_W("25/1"), kMax},
        {LMD_W("2048/1"), kMax},
        {LMD_W("4096/1"), kMax},
        {LMD_W("-1/1"), kMax},
        {LMD_W("2147483647/1"), kMax},
        {LMD_W("99999999999/1"), kMax},
        {LMD_W("1/2147483647"), 1'000'000},
        {LMD_W("-2147483648/-1"), 1'189'222},
        {LMD_W("1/-1"), 1'000'000},
        {LMD_W("99999999999/99999999999"), 1'400'000},
        {LMD_W("-1/-1"), 1'400'000}}) {
    ExpectMerged({Xmp(0xAB16, text)}, {FNumber(number)});
  }
}

TEST(HostileMerge, RationalTextsThatStay) {
  for (const auto& [text, words] :
       {std::pair<WideStringView, Bytes>{LMD_W("-1/-1"), HostWords({kMax, kMax})},
        {LMD_W("-2147483648/-2147483648"), HostWords({kMin, kMin})},
        {LMD_W("-99999999999/99999999999"), HostWords({kMin, 0x7FFFFFFF})},
        {LMD_W("0/-1"), HostWords({0, kMax})},
        {LMD_W("x/1y"), HostWords({0, 1})}}) {
    ExpectMerged({Xmp(0xAB17, text)}, {Exif(kFocalLength, TYPE_RATIONAL, words)});
    ExpectMerged({Xmp(0xAB14, text)}, {Exif(0x9204, TYPE_SRATIONAL, words)});
  }
}

TEST(HostileMerge, LensTexts) {
  ExpectMerged({Xmp(0xAB0B, LMD_W(""))}, {Note(2, TYPE_ASCII, {0})});
  ExpectMerged({{BLOCK_XMP, 0xAB0B, TYPE_WIDE_TEXT, {'L'}}}, {Note(2, TYPE_ASCII, {0})});
  ExpectMerged({{BLOCK_XMP, 0xAB0B, TYPE_WIDE_TEXT, {'L', 0}}}, {Note(2, TYPE_ASCII, {'L', 0})});
  ExpectMerged({Xmp(0xAB0B, WideString(30'000, 'L'))},
               {Note(2, TYPE_ASCII, Join({Bytes(30'000, 'L'), {0}}))});
  ExpectNothing({{BLOCK_XMP, 0xAB0B, TYPE_WIDE_TEXT, {}}});
}

// The four rationals of a lens under their keys, and the text if there is one.
std::vector<Value> LensValues(const std::vector<std::uint32_t>& words, std::string_view text) {
  std::vector<Value> values;
  if (!text.empty()) values.push_back(Note(3, TYPE_ASCII, Join({Text(text), {0}})));
  for (std::uint32_t i = 0; i < 4; ++i) {
    values.push_back(Note(12 + i, TYPE_SRATIONAL, HostWords({words[2 * i], words[2 * i + 1]})));
  }
  return values;
}

TEST(HostileMerge, LensSpecifications) {
  const std::vector<std::pair<std::vector<std::uint32_t>, std::string_view>> kLenses = {
      {{0, 0, 0, 0, 0, 0, 0, 0}, ""},
      {{24, 0, 70, 1, 28, 10, 28, 10}, ""},
      {{24, 1, 0, 1, 28, 10, 28, 10}, ""},
      {{24, 1, 70, 1, 1, 0, 1, 0}, "24.0-70.0 mm f/inf"},
      {{24, 1, 70, 1, 1, 0, 28, 10}, "24.0-70.0 mm f/inf"},
      {{24, 1, 70, 1, 28, 10, 1, 0}, "24.0-70.0 mm f/2.8-inf"},
      {{24, 1, 70, 1, 0, 0, 28, 10}, "24.0-70.0 mm f/nan-2.8"},
      {{24, 1, 70, 1, 28, 10, 0, 0}, "24.0-70.0 mm f/2.8-nan"},
      {{24, 1, 70, 1, 0, 1, 0, 1}, "24.0-70.0 mm f/0.0"},
      {{kMax, 1, kMax, 1, kMax, 1, kMax, 1}, "4294967296.0 mm f/4294967296.0"},
      {{1, kMax, kMin, kMax, 1, kMax, kMin, kMax}, "0.0-0.5 mm f/0.0-0.5"},
  };
  for (const auto& [words, text] : kLenses) {
    for (const Value& source : {Exif(kLensSpec, TYPE_RATIONAL, HostWords(words)),
                                Ifd0(kDngLens, TYPE_SRATIONAL, HostWords(words))}) {
      SCOPED_TRACE(text);
      ExpectMerged({source}, LensValues(words, text));
    }
  }
  for (const std::size_t size : {0U, 1U, 8U, 31U, 33U, 64U}) {
    ExpectNothing({Exif(kLensSpec, TYPE_RATIONAL, Bytes(size, 1))});
    ExpectNothing({Ifd0(kDngLens, TYPE_RATIONAL, Bytes(size, 1))});
  }
}

// The first lens has no text, so that of the second is taken; its numbers are not.
TEST(HostileMerge, TwoLensSpecifications) {
  const std::vector<std::uint32_t> broken = {24, 0, 70, 0, 1, 0, 0, 0};
  ExpectMerged({Exif(kLensSpec, TYPE_RATIONAL, HostWords(broken)),
                Ifd0(kDngLens, TYPE_RATIONAL, HostWords({50, 1, 50, 1, 14, 10, 14, 10}))},
               LensValues(broken, "50.0 mm f/1.4"));
}

TEST(HostileMerge, SensorFactorOfFocalLengths) {
  const auto sources = [](const std::vector<std::uint32_t>& focal, const Bytes& film) {
    return std::vector<Value>{Exif(kFocalLength, TYPE_RATIONAL, HostWords(focal)),
                              Exif(0xA405, TYPE_SHORT, film)};
  };
  ExpectMerged(sources({50, 1}, Short(50)), {Factor(kMillion)});
  ExpectMerged(sources({50, 1}, {50}), {Factor(kMillion)});
  ExpectMerged(sources({1, kMax}, Short(65'535)), {Factor(kMax)});
  ExpectMerged(sources({1, 4'294}, Short(1)), {Factor(4'294'000'000)});
  ExpectMerged(sources({1, 4'295}, Short(1)), {Factor(kMax)});
  ExpectMerged(sources({kMax, 1}, Short(1)), {Factor(0)});
  ExpectMerged(sources({kMin, kMax}, Short(1)), {Factor(1'999'999)});
  ExpectMerged(sources({kMax, kMax}, Short(2)), {Factor(2'000'000)});
  for (const auto& focal :
       {std::vector<std::uint32_t>{0, 1}, {1, 0}, {0, 0}, {}, {50}, {50, 1, 50}}) {
    ExpectNothing(sources(focal, Short(50)));
  }
  ExpectNothing(sources({50, 1}, Short(0)));
  ExpectNothing(sources({50, 1}, {}));
}

TEST(HostileMerge, SensorFactorOfTheResolution) {
  const auto sources = [](const std::vector<std::uint32_t>& resolution, const Bytes& width) {
    return std::vector<Value>{Exif(0xA20E, TYPE_RATIONAL, HostWords(resolution)),
                              Exif(0xA002, TYPE_SHORT, width)};
  };
  ExpectMerged(sources({1, 1}, Short(1)), {Factor(1'417'322)});
  ExpectMerged(sources({1, 1}, {1}), {Factor(1'417'322)});
  ExpectMerged(sources({kMax, 1}, Short(65'535)), {Factor(kMax)});
  ExpectMerged(sources({kMax, kMax}, Short(1)), {Factor(1'417'322)});
  ExpectMerged(sources({1, kMax}, Short(65'535)), {Factor(0)});
  for (const auto& resolution : {std::vector<std::uint32_t>{0, 1}, {1, 0}, {0, 0}, {}, {7}}) {
    ExpectNothing(sources(resolution, Short(50)));
  }
  ExpectNothing(sources({1, 1}, Short(0)));
  ExpectNothing(sources({1, 1}, {}));

  // A first way without numbers leaves the second one.
  ExpectMerged({Exif(kFocalLength, TYPE_RATIONAL, HostWords({0, 0})), Exif(0xA405, TYPE_SHORT, {}),
                Exif(0xA20E, TYPE_RATIONAL, HostWords({1, 1})), Exif(0xA002, TYPE_SHORT, Short(1))},
               {Factor(1'417'322)});
}

// An entry that says it has a size and got no memory for it.
TEST(HostileMerge, SourcesWithoutData) {
  const auto missing = [](VxMetadata& store, std::int32_t block, std::uint32_t key,
                          std::uint32_t type, std::uint32_t size) {
    TagEntry& entry = store.m_fnGetBlock(block)->FindOrInsert(key);
    entry.m_nTag = key;
    entry.m_nType = type;
    entry.m_nSize = size;
  };
  VxMetadata store;
  missing(store, BLOCK_MAKERNOTE_SUMMARY, 7, TYPE_LONG, 4);
  missing(store, BLOCK_EXIF, 0x9201, TYPE_SRATIONAL, 8);
  missing(store, BLOCK_XMP, 0xAB16, TYPE_WIDE_TEXT, 0xFFFFFFFE);
  missing(store, BLOCK_XMP, 0xAB17, TYPE_WIDE_TEXT, 8);
  missing(store, BLOCK_EXIF, kLensSpec, TYPE_RATIONAL, 32);
  missing(store, BLOCK_EXIF, 0xA405, TYPE_SHORT, 2);
  EXPECT_EQ(store.MergeMetadata(), S_OK);
  // The numbers read as 0: an ISO of 0, no time by a denominator of 0, a lens of zeros.
  EXPECT_EQ(Find(store, BLOCK_EXIF, kIso), (Stored{kIso, TYPE_SHORT, 0, "0000"}));
  EXPECT_EQ(Find(store, BLOCK_EXIF, kTime), std::nullopt);
  EXPECT_EQ(Find(store, BLOCK_EXIF, kFNumber), std::nullopt);
  EXPECT_EQ(Find(store, BLOCK_EXIF, kFocalLength), std::nullopt);
  EXPECT_EQ(Keys(store, BLOCK_MAKERNOTE_SUMMARY), (std::vector<std::uint32_t>{7, 12, 13, 14, 15}));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 12),
            (Stored{12, TYPE_SRATIONAL, 0, "0000000000000000"}));
}

}  // namespace
}  // namespace test
