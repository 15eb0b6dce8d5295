// IPTC records and Photoshop resources that end too early, claim too much, or repeat.

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "HostileFile.h"

namespace test {
namespace {

constexpr std::uint32_t kTitleKey = 31;
constexpr std::uint32_t kKeywordsKey = 22;

const Bytes kTitle = Join({{0x1C, 2, 5, 0, 2}, Text("ok")});

Bytes Keyword(const Bytes& text) {
  return Join({{0x1C, 2, 25}, U16(static_cast<std::uint16_t>(text.size())), text});
}

const Bytes kKeywordA = Keyword(Text("a"));

// `count` keywords "a" joined: the line feeds come with the second one.
std::optional<Stored> JoinedKeywords(std::size_t count) {
  WideString text = LMD_W("a");
  if (count > 1) text += LMD_W('\n');
  for (std::size_t i = 1; i < count; ++i) text += LMD_W("a\n");
  return Stored{kKeywordsKey, 162, 0, Hex(WideBytes(text))};
}

// The store after a block, and the reader's answer.
std::unique_ptr<StoreFile> Iptc(const Bytes& block, HRESULT* result) {
  return BoundedReader(
      block, [&](VxMetadata& store, const Bytes& bytes) { *result = store.m_fnParseIPTC(bytes); });
}

std::unique_ptr<StoreFile> Resources(const Bytes& block, HRESULT* result) {
  return BoundedReader(block, [&](VxMetadata& store, const Bytes& bytes) {
    *result = store.m_fnParsePhotoshopIRB(bytes);
  });
}

// A title of 7 bytes and a keyword of 8. Fewer than 6 bytes behind a dataset end the block quietly;
// a header of 5 whose data is cut ends it with an error.
TEST(HostileIptc, BlockEndsAtEveryByte) {
  const Bytes block = Join({kTitle, Keyword(Text("key"))});
  ASSERT_EQ(block.size(), 15U);
  for (std::size_t size = 0; size <= block.size(); ++size) {
    HRESULT result = 0;
    const auto file = Iptc(First(block, size), &result);
    const bool isCut = size == 6 || size == 13 || size == 14;
    EXPECT_EQ(result, isCut ? E_FAIL : S_OK) << size;
    const Tags expected = size == 15  ? Tags{kKeywordsKey, kTitleKey}
                          : size >= 7 ? Tags{kTitleKey}
                                      : Tags{};
    EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC), expected) << size;
  }
}

// The same in a segment that ends with the file, whose buffer claims two bytes more than that.
TEST(HostileIptc, SegmentEndsAtEveryByteOfTheFile) {
  const Bytes records = Join({kTitle, Keyword(Text("key"))});
  const Bytes file = First(Jpeg().Photoshop(PhotoshopResource(0x0404, records)).Build(),
                           2 + 4 + 14 + 12 + records.size());
  for (std::size_t cut = 0; cut <= records.size(); ++cut) {
    const auto parsed = BoundedJpeg(First(file, file.size() - cut));
    const std::size_t left = records.size() - cut;
    EXPECT_EQ(Keys(parsed->Store(), BLOCK_IPTC).size(), left == 15  ? 2U
                                                        : left >= 7 ? 1U
                                                                    : 0U)
        << cut;
  }
}

TEST(HostileIptc, LengthsWithTheHighBitEndTheBlock) {
  for (const std::uint16_t length : Shorts{0x8000, 0x8001, 0x8004, 0xFFFE, 0xFFFF}) {
    const Bytes block = Join({kTitle, {0x1C, 2, 25}, U16(length), Bytes(0x10000, 'k')});
    HRESULT result = 0;
    const auto file = Iptc(block, &result);
    EXPECT_EQ(result, E_FAIL) << length;
    EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC), Tags{kTitleKey}) << length;
  }
}

TEST(HostileIptc, GreatestLength) {
  HRESULT result = 0;
  const auto whole = Iptc(Keyword(Bytes(0x7FFF, 'k')), &result);
  EXPECT_EQ(result, S_OK);
  EXPECT_EQ(whole->Store().m_fnGetBlock(BLOCK_IPTC)->Find(kKeywordsKey)->m_nSize, 2U * 0x8000);
  const auto cut = Iptc(First(Keyword(Bytes(0x7FFF, 'k')), 5 + 0x7FFE), &result);
  EXPECT_EQ(result, E_FAIL);
  EXPECT_TRUE(Keys(cut->Store(), BLOCK_IPTC).empty());
}

// Numbers of fewer bytes than they need are passed over.
TEST(HostileIptc, ShortNumbers) {
  for (std::size_t size = 0; size <= 4; ++size) {
    const auto length = U16(static_cast<std::uint16_t>(size));
    const Bytes block =
        Join({{0x1C, 1, 90}, length, Bytes(size, 1), {0x1C, 2, 0}, length, Bytes(size, 1), kTitle});
    HRESULT result = 0;
    const auto file = Iptc(block, &result);
    EXPECT_EQ(result, S_OK);
    const Tags expected = size >= 3   ? Tags{11, 15, kTitleKey}
                          : size == 2 ? Tags{15, kTitleKey}
                                      : Tags{kTitleKey};
    EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC), expected) << size;
  }
}

Bytes BlockOfKeywords(std::size_t count) {
  const Tiff tiff(ByteOrder::LittleEndian);
  const Bytes keywords = Repeat(kKeywordA, count);
  return tiff.Build({tiff.Raw(kIptcTag, 7, static_cast<std::uint32_t>(keywords.size()), keywords)});
}

TEST(HostileIptc, AMillionKeywords) {
  const auto file = BoundedTiff(BlockOfKeywords(1'000'000));
  EXPECT_EQ(Find(file->Store(), BLOCK_IPTC, kKeywordsKey), JoinedKeywords(1'000'000));
}

TEST(HostileIptc, KeywordsAreJoinedInLinearTime) {
  ExpectLinear(50'000, [](std::size_t count) {
    StoreFile file(BlockOfKeywords(count));
    file.ParseTiff();
    return file.Store().m_fnGetBlock(BLOCK_IPTC)->Count();
  });
}

Bytes JpegOfKeywordBlocks(std::size_t count) {
  const Bytes segment = Jpeg().Photoshop(PhotoshopResource(0x0404, kKeywordA)).Build();
  const Bytes one(segment.begin() + 2, segment.end() - 2);
  return Jpeg().Raw(Repeat(one, count)).Frame(640, 480).Build();
}

// Each block joins to what the ones before it left.
TEST(HostileIptc, ManySegmentsThatJoin) {
  constexpr std::size_t kCount = 900;
  const Bytes bytes = JpegOfKeywordBlocks(kCount);
  ASSERT_LE(bytes.size(), kSmallInputSize);
  const auto file = BoundedJpeg(bytes);
  EXPECT_EQ(Find(file->Store(), BLOCK_IPTC, kKeywordsKey), JoinedKeywords(kCount));
  EXPECT_EQ(file->Store().m_nImageWidth, 640U);
}

TEST(HostileIptc, ManySegmentsThatJoinEndWithTheBudget) {
  const auto file = BoundedJpeg(JpegOfKeywordBlocks(20'000));
  EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC), Tags{kKeywordsKey});
  ExpectSound(file->Store());
  EXPECT_EQ(file->Store().m_nImageWidth, 640U);
}

// A long text first: every further block would copy it again.
TEST(HostileIptc, ManySegmentsThatJoinToALongText) {
  Jpeg jpeg;
  jpeg.Photoshop(PhotoshopResource(0x0404, Keyword(Bytes(0x7FFE, 'k'))));
  for (int i = 0; i < 850; ++i) jpeg.Photoshop(PhotoshopResource(0x0404, kKeywordA));
  const Bytes bytes = jpeg.Frame(640, 480).Build();
  ASSERT_LE(bytes.size(), kSmallInputSize);
  const auto file = BoundedJpeg(bytes);
  EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC), Tags{kKeywordsKey});
  ExpectSound(file->Store());
}

TEST(HostileIptc, ManyResourcesThatJoinInOneSegment) {
  Bytes resources = PhotoshopResource(0x0404, Keyword(Bytes(20'000, 'k')));
  resources = Join({resources, Repeat(PhotoshopResource(0x0404, kKeywordA), 2000)});
  const auto file = BoundedJpeg(Jpeg().Photoshop(resources).Frame(640, 480).Build());
  EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC), Tags{kKeywordsKey});
  ExpectSound(file->Store());
}

// --- Photoshop resources ---

Bytes ResourceOfSize(std::uint16_t id, std::uint32_t size, const Bytes& data) {
  return Join({Text("8BIM"), U16(id), Zeros(2), U32(size), data});
}

// The reader of IPTC sees what is there; what stands behind belongs to the resource.
TEST(HostilePhotoshop, SizesBeyondTheBlock) {
  for (const std::uint32_t size : {100U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFF0U, 0xFFFFFFFFU}) {
    const Bytes records = Join({kTitle, {0x1C, 3, 0, 0, 0, 0}});
    HRESULT result = 0;
    const auto file = Resources(
        Join({ResourceOfSize(0x0404, size, records), PhotoshopResource(0x0404, kKeywordA)}),
        &result);
    EXPECT_EQ(result, S_OK) << size;
    EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC), Tags{kTitleKey}) << size;

    const auto other = Resources(
        Join({ResourceOfSize(0x0405, size, {}), PhotoshopResource(0x0404, kTitle)}), &result);
    EXPECT_EQ(result, S_OK) << size;
    EXPECT_TRUE(Keys(other->Store(), BLOCK_IPTC).empty()) << size;
  }
}

// 28 bytes of header, of which some say how much follows.
Bytes ThumbnailResource(std::uint32_t compressedSize, const Bytes& data) {
  return Join(
      {U32(1), U32(80), U32(60), U32(240), U32(14400), U32(compressedSize), U16(24), U16(1), data});
}

TEST(HostilePhotoshop, ThumbnailSizesBeyondTheResource) {
  for (const std::uint32_t size :
       {5U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFE3U, 0xFFFFFFE4U, 0xFFFFFFE5U, 0xFFFFFFFFU}) {
    HRESULT result = 0;
    const auto file = Resources(
        PhotoshopResource(0x040C, ThumbnailResource(size, {0xFF, 0xD8, 0xFF, 0xD9})), &result);
    EXPECT_EQ(result, S_OK);
    EXPECT_EQ(file->Store().m_pThumbnail, nullptr) << size;
    EXPECT_EQ(file->Store().m_nThumbnailSize, 0U) << size;
  }
  for (const std::uint32_t size : {33U, 0x80000000U, 0xFFFFFFFFU}) {
    HRESULT result = 0;
    const auto file = Resources(
        ResourceOfSize(0x040C, size, ThumbnailResource(4, {0xFF, 0xD8, 0xFF, 0xD9})), &result);
    EXPECT_EQ(file->Store().m_pThumbnail, nullptr) << size;
  }
}

TEST(HostilePhotoshop, ThumbnailOfEverySize) {
  const Bytes whole = ThumbnailResource(4, {0xFF, 0xD8, 0xFF, 0xD9});
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    HRESULT result = 0;
    const auto file = Resources(PhotoshopResource(0x040C, First(whole, size)), &result);
    EXPECT_EQ(result, S_OK) << size;
    EXPECT_EQ(file->Store().m_nThumbnailSize, size == whole.size() ? 4U : 0U) << size;
  }
}

// The pad byte of an odd resource is missing at the block's very end, or is all that is there.
TEST(HostilePhotoshop, OddPaddingAtTheEnd) {
  ASSERT_EQ(kTitle.size() % 2, 1U);
  const Bytes padded = PhotoshopResource(0x0404, kTitle);
  HRESULT result = 0;
  for (const std::size_t cut : {0U, 1U}) {
    const auto file = Resources(First(padded, padded.size() - cut), &result);
    EXPECT_EQ(result, S_OK);
    EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC), Tags{kTitleKey});
  }
  const auto odd = Resources(ResourceOfSize(0x0405, 1, {}), &result);
  EXPECT_EQ(result, S_OK);
  EXPECT_TRUE(Keys(odd->Store(), BLOCK_IPTC).empty());
}

// A header of 12 bytes with a name of 4, cut at every byte; then a name that leads beyond the end.
TEST(HostilePhotoshop, HeaderEndsAtEveryByte) {
  const Bytes resource =
      Join({Text("8BIM"), U16(0x0404), {4}, Text("name"), {0}, U32(7), kTitle, {0}});
  for (std::size_t size = 0; size <= resource.size(); ++size) {
    HRESULT result = 0;
    const auto file = Resources(First(resource, size), &result);
    EXPECT_EQ(result, size < 10 ? E_FAIL : S_OK) << size;
    EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC).size(), size >= 16 + 7 ? 1U : 0U) << size;
  }
  HRESULT result = 0;
  const auto file =
      Resources(Join({Text("8BIM"), U16(0x0404), {255}, Zeros(100), kTitle}), &result);
  EXPECT_EQ(result, S_OK);
  EXPECT_TRUE(Keys(file->Store(), BLOCK_IPTC).empty());
}

TEST(HostilePhotoshop, ManyResourcesOfNoSize) {
  const Bytes resources =
      Join({Repeat(PhotoshopResource(0x0404, {}), 5000), PhotoshopResource(0x0404, kTitle)});
  const auto file = BoundedJpeg(Jpeg().Photoshop(resources).Frame(640, 480).Build());
  EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC), Tags{kTitleKey});
  EXPECT_EQ(file->Store().m_nImageWidth, 640U);
}

}  // namespace
}  // namespace test
