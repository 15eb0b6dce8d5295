// ICC profiles: header, tags, and their chunks in APP2.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/Jpeg.h"
#include "support/TiffSuite.h"

namespace test {
namespace {

// A header whose bytes are their own offsets.
Bytes Header() {
  Bytes header(128);
  for (std::size_t i = 0; i < header.size(); ++i) header[i] = static_cast<std::uint8_t>(i);
  return header;
}

struct IccTag {
  std::string_view signature;
  std::uint32_t offset;
  std::uint32_t size;
};

// A header, a table of tags and what follows. The data of a profile of n tags begins at 132 + 12 n.
Bytes Profile(const std::vector<IccTag>& tags, const Bytes& data) {
  Bytes profile = Join({Header(), U32(static_cast<std::uint32_t>(tags.size()))});
  for (const IccTag& tag : tags) {
    profile = Join({profile, Text(tag.signature), U32(tag.offset), U32(tag.size)});
  }
  return Join({profile, data});
}

// The store of a profile that was read.
struct Icc {
  explicit Icc(const Bytes& profile, std::uint32_t flags = PARSE_ICC) {
    store.m_nParseFlags = flags;
    store.m_fnParseICCProfile(profile);
  }

  VxMetadata store;
};

// Type and bytes of a value, "type:hex"; the count of these values means nothing.
std::string Value(VxMetadata& store, std::uint32_t key) {
  const std::optional<Stored> stored = Find(store, BLOCK_ICC, key);
  if (!stored) return "none";
  EXPECT_EQ(stored->tag, key);
  return std::to_string(stored->type) + ":" + stored->hex;
}

std::vector<std::uint32_t> FirstKeys(std::uint32_t count) {
  std::vector<std::uint32_t> keys;
  for (std::uint32_t key = 1; key <= count; ++key) keys.push_back(key);
  return keys;
}

// --- The header ---

struct FieldRow {
  std::uint32_t key;
  std::size_t end;  // just past the field
  const char* value;
};

// clang-format off
constexpr std::array kFieldRows = {
    FieldRow{ 1,   4, "4:03020100"},
    FieldRow{ 2,   8, "2:0405060700"},
    FieldRow{ 3,  12, "1:08090a0b"},
    FieldRow{ 4,  16, "2:0c0d0e0f00"},
    FieldRow{ 5,  20, "2:1011121300"},
    FieldRow{ 6,  24, "2:1415161700"},
    FieldRow{ 7,  36, "1:18191a1b1c1d1e1f20212223"},
    FieldRow{ 8,  40, "2:2425262700"},
    FieldRow{ 9,  44, "2:28292a2b00"},
    FieldRow{10,  48, "1:2c2d2e2f"},
    FieldRow{11,  52, "2:3031323300"},
    FieldRow{12,  56, "2:3435363700"},
    FieldRow{13,  64, "1:38393a3b3c3d3e3f"},
    FieldRow{14,  68, "1:40414243"},
    FieldRow{15,  80, "1:4445464748494a4b4c4d4e4f"},
    FieldRow{16,  84, "2:5051525300"},
    FieldRow{17, 100, "1:5455565758595a5b5c5d5e5f60616263"},
};
// clang-format on

TEST(IccHeader, EveryFieldIsStoredUnderItsKey) {
  Icc icc(Header());
  EXPECT_EQ(Keys(icc.store, BLOCK_ICC), FirstKeys(17));
  for (const FieldRow& row : kFieldRows) EXPECT_EQ(Value(icc.store, row.key), row.value);
}

TEST(IccHeader, NeedsItsFlag) {
  for (const std::uint32_t flags : {0U, ~std::uint32_t{PARSE_ICC}}) {
    VxMetadata store;
    store.m_nParseFlags = flags;
    EXPECT_EQ(store.m_fnParseICCProfile(Header()), S_OK);
    EXPECT_TRUE(Keys(store, BLOCK_ICC).empty());
  }
}

TEST(IccHeader, FieldThatIsNotWholeEndsTheReader) {
  std::uint32_t whole = 0;
  for (std::size_t size = 0; size <= 128; ++size) {
    while (whole < kFieldRows.size() && kFieldRows[whole].end <= size) ++whole;
    const Bytes header = Header();
    Icc icc(Bytes(header.begin(), header.begin() + static_cast<std::ptrdiff_t>(size)));
    EXPECT_EQ(Keys(icc.store, BLOCK_ICC), FirstKeys(whole)) << size;
  }
}

TEST(IccHeader, TextsMayHoldZeros) {
  Bytes header = Header();
  header[4] = header[5] = header[6] = header[7] = 0;
  Icc icc(header);
  EXPECT_EQ(Value(icc.store, 2), "2:0000000000");
}

// --- The tags ---

struct TagRow {
  const char* signature;
  std::uint32_t key;
};

// clang-format off
constexpr std::array kTagRows = {
    TagRow{"cprt", 256}, TagRow{"desc", 257}, TagRow{"wtpt", 258}, TagRow{"bkpt", 259},
    TagRow{"rTRC", 260}, TagRow{"gTRC", 261}, TagRow{"bTRC", 262}, TagRow{"rXYZ", 263},
    TagRow{"gXYZ", 264}, TagRow{"bXYZ", 265}, TagRow{"dmnd", 266},
};
// clang-format on

TEST(IccTags, EveryKeptTagIsStoredUnderItsKey) {
  for (const TagRow& row : kTagRows) {
    const Bytes data = Join({Text("XYZ "), Zeros(4), {1, 2, 3}});
    Icc icc(Profile({{row.signature, 144, 11}}, data));
    EXPECT_EQ(Value(icc.store, row.key), "1:010203") << row.signature;
    EXPECT_EQ(Keys(icc.store, BLOCK_ICC).size(), 18U) << row.signature;
  }
}

TEST(IccTags, AllKeptTagsOfOneProfileAreStored) {
  std::vector<IccTag> tags;
  for (const TagRow& row : kTagRows) tags.push_back({row.signature, 132 + 12 * 11, 9});
  Icc icc(Profile(tags, Join({Text("XYZ "), Zeros(4), {7}})));
  EXPECT_EQ(Keys(icc.store, BLOCK_ICC).size(), 28U);
  for (const TagRow& row : kTagRows) EXPECT_EQ(Value(icc.store, row.key), "1:07");
}

TEST(IccTags, OtherTagsAreSkipped) {
  for (const char* signature : {"A2B0", "DESC", "dmdd", "chad", "Cprt", "XYZr"}) {
    Icc icc(Profile({{signature, 144, 11}}, Join({Text("XYZ "), Zeros(7)})));
    EXPECT_EQ(Keys(icc.store, BLOCK_ICC), FirstKeys(17)) << signature;
  }
}

TEST(IccTags, DescriptionLosesTwelveBytes) {
  Icc icc(Profile({{"desc", 144, 17}}, Join({Text("desc"), Zeros(4), U32(5), Text("sRGB"), {0}})));
  EXPECT_EQ(Value(icc.store, 257), "2:7352474200");
}

TEST(IccTags, TextLosesEightBytes) {
  Icc icc(Profile({{"cprt", 144, 12}}, Join({Text("text"), Zeros(4), Text("(c)"), {0}})));
  EXPECT_EQ(Value(icc.store, 256), "2:28632900");
}

TEST(IccTags, TextWithoutAZeroGetsNone) {
  Icc icc(Profile({{"cprt", 144, 11}}, Join({Text("text"), Zeros(4), Text("(c)X")})));
  EXPECT_EQ(Value(icc.store, 256), "2:286329");
}

TEST(IccTags, OtherTypesLoseEightBytesAndAreBytes) {
  for (const char* type : {"XYZ ", "curv", "mluc", "Text", "DESC"}) {
    Icc icc(Profile({{"desc", 144, 14}}, Join({Text(type), Zeros(4), {1, 2, 3, 4, 5, 6}})));
    EXPECT_EQ(Value(icc.store, 257), "1:010203040506") << type;
  }
}

TEST(IccTags, TypeDecidesNotTheSignature) {
  const Bytes data = Join({Text("desc"), Zeros(4), U32(2), Text("ab")});
  Icc icc(Profile({{"rXYZ", 144, 14}}, data));
  EXPECT_EQ(Value(icc.store, 263), "2:6162");
}

TEST(IccTags, CountIsLeftAsItWas) {
  VxMetadata store;
  store.m_nParseFlags = PARSE_ICC;
  store.m_fnGetBlock(BLOCK_ICC)->FindOrInsert(257).m_nCount = 9;
  store.m_fnParseICCProfile(Profile({{"desc", 156, 9}, {"cprt", 156, 9}}, Bytes(9, 1)));
  EXPECT_EQ(Find(store, BLOCK_ICC, 257), (Stored{257, 1, 9, "01"}));
  EXPECT_EQ(Find(store, BLOCK_ICC, 256), (Stored{256, 1, 0, "01"}));
}

TEST(IccTags, LastOfARepeatedTagWins) {
  const Bytes data = Join({Text("XYZ "), Zeros(4), {1}, Text("XYZ "), Zeros(4), {2}});
  Icc icc(Profile({{"wtpt", 156, 9}, {"wtpt", 165, 9}}, data));
  EXPECT_EQ(Value(icc.store, 258), "1:02");
}

TEST(IccTags, TagOfItsTypeHeaderAloneIsEmpty) {
  const Bytes data = Join({Text("text"), Zeros(4), Text("desc"), Zeros(8), Text("curv"), Zeros(4)});
  Icc icc(Profile({{"cprt", 168, 8}, {"desc", 176, 12}, {"rTRC", 188, 8}}, data));
  EXPECT_EQ(Value(icc.store, 256), "2:");
  EXPECT_EQ(Value(icc.store, 257), "2:");
  EXPECT_EQ(Value(icc.store, 260), "1:");
}

TEST(IccTags, TagSmallerThanItsTypeHeaderIsSkipped) {
  const Bytes data = Join({Text("text"), Zeros(4), Text("desc"), Zeros(8), Text("curv"), Zeros(4)});
  for (const std::uint32_t size : {0U, 3U, 4U, 7U}) {
    Icc icc(Profile({{"cprt", 168, size}, {"desc", 176, size + 4}, {"rTRC", 188, size}}, data));
    EXPECT_EQ(Keys(icc.store, BLOCK_ICC), FirstKeys(17)) << size;
  }
}

TEST(IccTags, TagThatEndsTheProfileIsKept) {
  Icc icc(Profile({{"wtpt", 144, 11}}, Join({Text("XYZ "), Zeros(4), {1, 2, 3}})));
  EXPECT_EQ(Value(icc.store, 258), "1:010203");
}

TEST(IccTags, TagBeyondTheProfileIsSkippedAndTheNextIsRead) {
  const Bytes data = Join({Text("XYZ "), Zeros(4), {1, 2, 3}});
  const IccTag rows[] = {{"wtpt", 156, 12},
                         {"wtpt", 157, 11},
                         {"wtpt", 0xFFFFFFFF, 11},
                         {"wtpt", 156, 0xFFFFFFFF},
                         {"wtpt", 0xFFFFFFF8, 164},
                         {"wtpt", 156, 0xFFFFFF64},
                         {"wtpt", 0x80000000, 0x80000000}};
  for (const IccTag& row : rows) {
    Icc icc(Profile({row, {"bkpt", 156, 11}}, data));
    EXPECT_EQ(Value(icc.store, 258), "none") << row.offset << " " << row.size;
    EXPECT_EQ(Value(icc.store, 259), "1:010203") << row.offset << " " << row.size;
  }
}

TEST(IccTags, OffsetsMayLeadIntoTheHeader) {
  Icc icc(Profile({{"wtpt", 0, 12}}, {}));
  EXPECT_EQ(Value(icc.store, 258), "1:08090a0b");
}

TEST(IccTags, ProfileOf128BytesHasNone) {
  Icc icc(Header());
  EXPECT_EQ(Keys(icc.store, BLOCK_ICC), FirstKeys(17));
}

TEST(IccTags, CountOf0EndsTheReader) {
  Bytes profile = Profile({{"wtpt", 144, 11}}, Join({Text("XYZ "), Zeros(4), {1, 2, 3}}));
  profile[131] = 0;
  Icc icc(profile);
  EXPECT_EQ(Keys(icc.store, BLOCK_ICC), FirstKeys(17));
}

TEST(IccTags, CutCountEndsTheReader) {
  const Bytes profile = Profile({{"wtpt", 0, 12}}, {});
  for (std::ptrdiff_t size = 128; size < 132; ++size) {
    Icc icc(Bytes(profile.begin(), profile.begin() + size));
    EXPECT_EQ(Keys(icc.store, BLOCK_ICC), FirstKeys(17)) << size;
  }
}

TEST(IccTags, CutRecordEndsTheReader) {
  const Bytes profile = Profile({{"wtpt", 0, 12}, {"bkpt", 0, 12}}, {});
  for (std::ptrdiff_t size = 144; size < 156; ++size) {
    Icc icc(Bytes(profile.begin(), profile.begin() + size));
    EXPECT_EQ(Value(icc.store, 258), "1:08090a0b") << size;
    EXPECT_EQ(Value(icc.store, 259), "none") << size;
  }
}

TEST(IccTags, GreatestCountEndsAtTheProfilesEnd) {
  Bytes profile = Profile({{"wtpt", 0, 12}}, {});
  for (std::size_t i = 128; i < 132; ++i) profile[i] = 0xFF;
  Icc icc(profile);
  EXPECT_EQ(Keys(icc.store, BLOCK_ICC).size(), 18U);
}

// --- In a JPEG file ---

const Bytes kSmall = Profile({{"wtpt", 144, 11}}, Join({Text("XYZ "), Zeros(4), {1, 2, 3}}));

TEST(IccSegment, SingleChunkIsReadWhole) {
  StoreFile file(Jpeg().Icc(kSmall).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Value(file.Store(), 1), "4:03020100");
  EXPECT_EQ(Value(file.Store(), 258), "1:010203");
}

TEST(IccSegment, ThreeChunksGiveTheHeaderOnly) {
  const Bytes middle(200, 0x55);
  StoreFile file(Jpeg().Icc(kSmall, 1, 3).Icc(middle, 2, 3).Icc(middle, 3, 3).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_ICC), FirstKeys(17));
  EXPECT_EQ(Value(file.Store(), 2), "2:0405060700");
}

TEST(IccSegment, TotalOf0GivesTheHeaderOnly) {
  StoreFile file(Jpeg().Icc(kSmall, 1, 0).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_ICC), FirstKeys(17));
}

TEST(IccSegment, OtherChunksThanTheFirstAreNotRead) {
  for (const std::uint8_t number : {std::uint8_t{0}, std::uint8_t{2}, std::uint8_t{255}}) {
    StoreFile file(Jpeg().Icc(kSmall, number, 1).Frame(64, 48).Build());
    EXPECT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_TRUE(Keys(file.Store(), BLOCK_ICC).empty());
    EXPECT_EQ(file.Store().m_nImageWidth, 64U);
  }
}

TEST(IccSegment, NameIncludesItsZero) {
  for (const Bytes& name : {Join({Text("ICC_PROFILE"), {1}}), Join({Text("ICC_PROFILF"), {0}}),
                            Join({Text("icc_profile"), {0}}), Join({Text("MPF"), Zeros(9)})}) {
    StoreFile file(Jpeg().Segment(0xE2, Join({name, {1, 1}, kSmall})).Build());
    EXPECT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_TRUE(Keys(file.Store(), BLOCK_ICC).empty()) << Hex(name);
  }
}

TEST(IccSegment, OtherMarkersAreNotRead) {
  StoreFile file(Jpeg().Segment(0xE3, Join({Text("ICC_PROFILE"), {0, 1, 1}, kSmall})).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_ICC).empty());
}

TEST(IccSegment, NeedsItsFlag) {
  StoreFile file(Jpeg().Icc(kSmall).Build(), kReadAll & ~PARSE_ICC);
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_ICC).empty());
}

TEST(IccSegment, TwoBytesAfterTheSegmentBelongToTheProfile) {
  // The tag's data ends 0 to 3 bytes after the segment.
  const Bytes payload = Join({Text("ICC_PROFILE"), {0, 1, 1}, kSmall});
  for (std::uint16_t beyond = 0; beyond <= 3; ++beyond) {
    const auto length = static_cast<std::uint16_t>(payload.size() + 2 - beyond);
    StoreFile file(Jpeg().SegmentOfLength(0xE2, length, payload).Build());
    EXPECT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_EQ(Value(file.Store(), 258), beyond <= 2 ? "1:010203" : "none") << beyond;
  }
}

TEST(IccSegment, ShortSegmentsAreHarmless) {
  const Bytes payload = Join({Text("ICC_PROFILE"), {0, 1, 1}, Header()});
  for (std::size_t size = 0; size < 20; ++size) {
    const Bytes cut(payload.begin(), payload.begin() + static_cast<std::ptrdiff_t>(size));
    StoreFile file(Jpeg().Segment(0xE2, cut).Frame(64, 48).Build());
    EXPECT_EQ(file.ParseJpeg(), S_OK) << size;
    EXPECT_EQ(file.Store().m_nImageWidth, 64U) << size;
  }
}

TEST(IccSegment, SecondProfileWritesOverTheFirst) {
  Bytes second = Header();
  second[8] = 0xAA;
  StoreFile file(Jpeg().Icc(kSmall).Icc(second).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Value(file.Store(), 3), "1:aa090a0b");
  EXPECT_EQ(Value(file.Store(), 258), "1:010203");
}

}  // namespace
}  // namespace test
