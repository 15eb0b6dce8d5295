// ICC profiles that are cut, point outside themselves, or point to the same bytes over and over.

#include <algorithm>
#include <cstdint>
#include <string_view>

#include <gtest/gtest.h>

#include "HostileFile.h"

namespace test {
namespace {

constexpr std::uint32_t kDescriptionKey = 257;
constexpr std::size_t kHeaderFields = 17;

std::unique_ptr<StoreFile> Profile(const Bytes& profile) {
  return BoundedReader(profile, [](VxMetadata& store, const Bytes& bytes) {
    EXPECT_EQ(store.m_fnParseICCProfile(bytes), S_OK);
  });
}

Bytes Record(std::string_view signature, std::uint32_t offset, std::uint32_t size) {
  return Join({Text(signature), U32(offset), U32(size)});
}

// A header, the number of tags, their records, and data.
Bytes ProfileOf(std::uint32_t tags, const Bytes& records, const Bytes& data = {}) {
  return Join({Bytes(128, 0x41), U32(tags), records, data});
}

// Where each field of the header ends. A field that is cut is not there, and none behind it.
TEST(HostileIcc, ProfileOfEverySize) {
  constexpr std::size_t kEnds[kHeaderFields] = {4,  8,  12, 16, 20, 24, 36, 40, 44,
                                                48, 52, 56, 64, 68, 80, 84, 100};
  const Bytes profile = ProfileOf(1, Record("desc", 132, 12));
  for (std::size_t size = 0; size <= 140; ++size) {
    const auto fields = std::ranges::count_if(kEnds, [&](std::size_t end) { return end <= size; });
    const auto file = Profile(First(profile, size));
    EXPECT_EQ(Keys(file->Store(), BLOCK_ICC).size(), static_cast<std::size_t>(fields)) << size;
  }
}

// The same at the end of a file, where the segment's length also claims what is cut.
TEST(HostileIcc, SegmentOfEverySizeAtTheEndOfTheFile) {
  const Bytes profile = ProfileOf(1, Record("desc", 132, 12));
  const Bytes whole = Jpeg().Icc(profile).Build();
  const std::size_t start = 2 + 4 + 14;
  for (std::size_t size = 0; size <= 140; ++size) {
    const auto file = BoundedJpeg(First(whole, start + size));
    EXPECT_EQ(Keys(file->Store(), BLOCK_ICC).size() == kHeaderFields, size >= 100) << size;
    EXPECT_FALSE(Find(file->Store(), BLOCK_ICC, kDescriptionKey).has_value()) << size;
  }
}

TEST(HostileIcc, OffsetAndSizeThatWrap) {
  const Bytes data = Join({Text("desc"), Zeros(8), Text("sRGB"), Zeros(1)});
  for (const auto& [offset, size] : {std::pair{0xFFFFFFF0U, 0x20U},
                                     {0xFFFFFFFFU, 1U},
                                     {0xFFFFFFFFU, 2U},
                                     {144U, 0xFFFFFFFFU},
                                     {144U, 0xFFFFFF70U},
                                     {0x80000000U, 0x80000000U},
                                     {0x80000000U, 0x80000010U},
                                     {144U, 18U},
                                     {161U, 1U},
                                     {162U, 0U}}) {
    const auto file = Profile(ProfileOf(1, Record("desc", offset, size), data));
    EXPECT_EQ(Keys(file->Store(), BLOCK_ICC).size(), kHeaderFields) << offset << " " << size;
  }
  const auto file = Profile(ProfileOf(1, Record("desc", 144, 17), data));
  EXPECT_EQ(Find(file->Store(), BLOCK_ICC, kDescriptionKey),
            (Stored{kDescriptionKey, 2, 0, Hex(Join({Text("sRGB"), Zeros(1)}))}));
}

// A tag shorter than its type's header, 12 bytes or 8, has no value; one of that size an empty one.
TEST(HostileIcc, SizesBelowTheHeaderOfTheData) {
  for (const auto& [type, header] : {std::pair{"desc", 12U}, {"text", 8U}, {"XYZ ", 8U}}) {
    for (std::uint32_t size = 0; size <= 16; ++size) {
      const auto file =
          Profile(ProfileOf(1, Record("desc", 144, size), Join({Text(type), Bytes(12, 0x42)})));
      const TagEntry* entry = file->Store().m_fnGetBlock(BLOCK_ICC)->Find(kDescriptionKey);
      ASSERT_EQ(entry != nullptr, size >= header) << type << " " << size;
      if (entry != nullptr) {
        EXPECT_EQ(entry->m_nSize, size - header) << type << " " << size;
      }
    }
  }
}

TEST(HostileIcc, GreatestNumberOfTags) {
  const Bytes data = Join({Text("text"), Zeros(4), Text("(c)"), Zeros(1)});
  for (const std::uint32_t tags : {2U, 1000U, 0x15555555U, 0x15555556U, 0x80000000U, 0xFFFFFFFFU}) {
    const auto file = Profile(ProfileOf(tags, Record("cprt", 144, 12), data));
    EXPECT_EQ(Keys(file->Store(), BLOCK_ICC).size(), kHeaderFields + 1) << tags;
    EXPECT_EQ(Find(file->Store(), BLOCK_ICC, 256),
              (Stored{256, 2, 0, Hex(Join({Text("(c)"), Zeros(1)}))}))
        << tags;
  }
}

// Every record stores the whole profile behind its first 8 bytes; the budget holds for some 40 of
// them, and what is written later stays without data.
TEST(HostileIcc, RecordsThatShareOneLargeRange) {
  constexpr std::uint32_t kRecords = 4900;
  constexpr std::uint32_t kSize = 132 + 12 * kRecords;
  Bytes records;
  for (const char* signature : {"cprt", "wtpt", "bkpt", "rTRC", "gTRC", "bTRC", "dmnd"}) {
    records = Join({records, Repeat(Record(signature, 0, kSize), kRecords / 7)});
  }
  const Tiff tiff(ByteOrder::LittleEndian);
  const Bytes profile = ProfileOf(kRecords, records);
  ASSERT_EQ(profile.size(), kSize);
  const auto file = BoundedJpeg(
      Jpeg().Exif(tiff.Build({tiff.Undefined(kIccTag, profile)})).Frame(640, 480).Build());
  VxMetadata& store = file->Store();
  EXPECT_EQ(Keys(store, BLOCK_ICC).size(), kHeaderFields + 7);
  EXPECT_LT(StoredBytes(store, BLOCK_ICC), 3U * 1024 * 1024);
  EXPECT_EQ(store.m_fnGetBlock(BLOCK_ICC)->Find(266)->m_nSize, kSize - 8);
  ExpectSound(store);
  EXPECT_EQ(store.m_nImageWidth, 640U);
}

TEST(HostileIcc, ManyProfiles) {
  const Bytes segment = Jpeg().Icc(ProfileOf(0, {})).Build();
  const Bytes one(segment.begin() + 2, segment.end() - 2);
  const auto parse = [&](std::size_t count) {
    StoreFile file(Jpeg().Raw(Repeat(one, count)).Build());
    file.ParseJpeg();
    return Keys(file.Store(), BLOCK_ICC).size();
  };
  EXPECT_EQ(Bounded(kSmallInput, [&] { return parse(430); }), kHeaderFields);
  ExpectLinear(430, parse);
}

}  // namespace
}  // namespace test
