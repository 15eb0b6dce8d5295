#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "exif/IptcDatasets.h"
#include "exif/VxMetadata.h"
#include "support/Jpeg.h"
#include "support/LogCapture.h"
#include "support/StoreFile.h"
#include "support/Tiff.h"

namespace {

using test::Bytes;
using test::Find;
using test::Join;
using test::Jpeg;
using test::Keys;
using test::LogCapture;
using test::Stored;
using test::StoreFile;
using test::Text;
using test::Tiff;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kKeywords = 22;
constexpr std::uint32_t kCaption = 19;
constexpr std::uint8_t kKeywordsNumber = 25;
constexpr std::uint8_t kCaptionNumber = 120;

// A dataset of record 1 or 2 with any length in its header.
Bytes DatasetOfLength(std::uint8_t record, std::uint8_t number, std::uint16_t length,
                      const Bytes& data) {
  return Join({{0x1C, record, number}, test::U16(length), data});
}

Bytes Dataset(std::uint8_t record, std::uint8_t number, const Bytes& data) {
  return DatasetOfLength(record, number, static_cast<std::uint16_t>(data.size()), data);
}

Bytes Dataset(std::uint8_t record, std::uint8_t number, std::string_view text) {
  return Dataset(record, number, Text(text));
}

Bytes Keyword(std::string_view text) {
  return Dataset(2, kKeywordsNumber, text);
}

// Announces UTF-8.
const Bytes g_utf8Mark = Dataset(1, 90, Bytes{0x1B, 0x25, 0x47});

class IptcRecords : public testing::Test {
 protected:
  IptcRecords() { m_store.m_nParseFlags = PARSE_IPTC; }

  HRESULT Parse(const Bytes& block) { return m_store.m_fnParseIPTC(block); }
  HRESULT Parse(std::initializer_list<Bytes> datasets) { return Parse(Join(datasets)); }
  std::vector<std::uint32_t> StoredKeys() { return Keys(m_store, BLOCK_IPTC); }
  std::optional<Stored> Value(std::uint32_t key) { return Find(m_store, BLOCK_IPTC, key); }

  // An entry that holds the given text.
  static Stored TextEntry(std::uint32_t key, WideStringView text) {
    return {key, 162, 0, test::Hex(test::WideBytes(text))};
  }

  VxMetadata m_store;
};

TEST_F(IptcRecords, ReadsNothingWithoutItsFlag) {
  m_store.m_nParseFlags = ~0x0010U;
  const LogCapture log;
  EXPECT_EQ(Parse({Keyword("a"), {0x1C, 0x02}}), S_OK);
  EXPECT_THAT(StoredKeys(), IsEmpty());
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(IptcRecords, ReadsNothingFromFewerThanSixBytes) {
  const Bytes block = Dataset(2, kKeywordsNumber, "");
  for (std::size_t size = 0; size <= 5; ++size) {
    const LogCapture log;
    EXPECT_EQ(Parse(Bytes(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(size))), S_OK);
    EXPECT_THAT(log.Lines(), ElementsAre("m_fnParseIPTC in \n", "m_fnParseIPTC out\n"));
  }
  EXPECT_THAT(StoredKeys(), IsEmpty());
}

TEST_F(IptcRecords, StoresASingleTextWithoutALineFeed) {
  const LogCapture log;
  EXPECT_EQ(Parse({Keyword("a")}), S_OK);
  EXPECT_EQ(Value(kKeywords), (Stored{22, 162, 0, "61000000"}));
  EXPECT_THAT(StoredKeys(), ElementsAre(22));
  EXPECT_THAT(log.Lines(), ElementsAre("m_fnParseIPTC in \n", "m_fnParseIPTC out\n"));
}

TEST_F(IptcRecords, JoinsRepeatedTextsIntoLines) {
  EXPECT_EQ(Parse({Keyword("a"), Keyword("b")}), S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("a\nb\n")));
  VxMetadata store;
  store.m_nParseFlags = PARSE_IPTC;
  EXPECT_EQ(store.m_fnParseIPTC(Join({Keyword("a"), Keyword("b"), Keyword("c")})), S_OK);
  EXPECT_EQ(Find(store, BLOCK_IPTC, 22), (Stored{22, 162, 0, "61000a0062000a0063000a000000"}));
}

TEST_F(IptcRecords, AddsNoSecondLineFeedToATextThatEndsInOne) {
  EXPECT_EQ(Parse({Keyword("a\n"), Keyword("b\n"), Keyword("c")}), S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("a\nb\n\nc\n")));
}

TEST_F(IptcRecords, JoinsEmptyTextsAsEmptyLines) {
  EXPECT_EQ(Parse({Keyword(""), Keyword(""), Keyword("c")}), S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("\n\nc\n")));
}

TEST_F(IptcRecords, JoinsEachKeyForItself) {
  EXPECT_EQ(Parse({Keyword("a"), Dataset(2, kCaptionNumber, "x"), Keyword("b"),
                   Dataset(2, kCaptionNumber, "y"), Dataset(2, 5, "title")}),
            S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("a\nb\n")));
  EXPECT_EQ(Value(kCaption), TextEntry(19, LMD_W("x\ny\n")));
  EXPECT_EQ(Value(31), TextEntry(31, LMD_W("title")));
}

TEST_F(IptcRecords, JoinsTextsAcrossBlocks) {
  EXPECT_EQ(Parse({Keyword("a")}), S_OK);
  EXPECT_EQ(Parse({Keyword("b")}), S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("a\nb\n")));
  EXPECT_EQ(Parse({Keyword("c"), Dataset(2, 5, "t"), Keyword("d")}), S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("a\nb\nc\nd\n")));
  EXPECT_EQ(Value(31), TextEntry(31, LMD_W("t")));
}

// A block of many datasets must give what a block for each of them gives.
TEST_F(IptcRecords, JoinsWithinABlockAsAcrossBlocks) {
  const std::array<std::string_view, 7> texts = {"a\n", "", "b", "\n", "\xC3\xA9", "\xE9", ""};
  for (std::size_t first = 0; first < texts.size(); ++first) {
    VxMetadata together;
    VxMetadata apart;
    together.m_nParseFlags = PARSE_IPTC;
    apart.m_nParseFlags = PARSE_IPTC;
    Bytes block;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      // A byte more behind each dataset lets the empty ones be seen in blocks of their own.
      const Bytes dataset = Keyword(texts[(first + i) % texts.size()]);
      EXPECT_EQ(apart.m_fnParseIPTC(Join({dataset, {0}})), S_OK);
      block = Join({block, dataset});
    }
    EXPECT_EQ(together.m_fnParseIPTC(Join({block, {0}})), S_OK);
    EXPECT_EQ(Find(together, BLOCK_IPTC, 22), Find(apart, BLOCK_IPTC, 22)) << first;
  }
}

TEST_F(IptcRecords, TakesATextUpToItsFirstZero) {
  EXPECT_EQ(
      Parse({Keyword(std::string_view("ab\0cd", 5)), Dataset(2, 5, std::string_view("\0x", 2)),
             Keyword(std::string_view("ef\0", 3))}),
      S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("ab\nef\n")));
  EXPECT_EQ(Value(31), TextEntry(31, LMD_W("")));
}

TEST_F(IptcRecords, ReadsTheFirstTextInTheAnsiCodePage) {
  EXPECT_EQ(Parse({Keyword("caf\xE9")}), S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("caf\u00E9")));
}

TEST_F(IptcRecords, ReadsTextsAsUtf8AfterTheCharacterSetSaysSo) {
  EXPECT_EQ(Parse({g_utf8Mark, Keyword("caf\xC3\xA9"), Dataset(2, 5, "\xE2\x82\xAC")}), S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("caf\u00E9")));
  EXPECT_EQ(Value(31), TextEntry(31, LMD_W("\u20AC")));
}

TEST_F(IptcRecords, HonoursACharacterSetOnlyForTheTextsBehindIt) {
  EXPECT_EQ(Parse({Dataset(2, 5, "\xC3\xA9"), g_utf8Mark, Keyword("\xC3\xA9")}), S_OK);
  EXPECT_EQ(Value(31), TextEntry(31, LMD_W("\u00C3\u00A9")));
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("\u00E9")));
}

TEST_F(IptcRecords, ForgetsTheCharacterSetWithTheBlock) {
  EXPECT_EQ(Parse({g_utf8Mark, Keyword("a")}), S_OK);
  EXPECT_EQ(Parse({Dataset(2, 5, "\xC3\xA9")}), S_OK);
  EXPECT_EQ(Value(31), TextEntry(31, LMD_W("\u00C3\u00A9")));
}

TEST_F(IptcRecords, KeepsTheCodePageWithAnyOtherCharacterSet) {
  const Bytes other = Dataset(1, 90, Bytes{0x1B, 0x2E, 0x41});
  EXPECT_EQ(Parse({other, Keyword("\xE9")}), S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("\u00E9")));
  EXPECT_EQ(Parse({g_utf8Mark, other, Dataset(2, 5, "\xC3\xA9")}), S_OK);
  EXPECT_EQ(Value(31), TextEntry(31, LMD_W("\u00E9"))) << "UTF-8 stays";
}

TEST_F(IptcRecords, ReadsRepeatedTextsAlwaysAsUtf8) {
  EXPECT_EQ(Parse({Keyword("\xC3\xA9"), Keyword("\xC3\xA9")}), S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("\u00C3\u00A9\n\u00E9\n")));
  EXPECT_EQ(Parse({Keyword("\xFFz")}), S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("\u00C3\u00A9\n\u00E9\n\uFFFDz\n")));
}

TEST_F(IptcRecords, StoresTheCharacterSetAsThreeNumbers) {
  EXPECT_EQ(Parse({Dataset(1, 90, Bytes{0x1B, 0xFE, 0x03, 0x04})}), S_OK);
  EXPECT_EQ(Value(11), (Stored{11, 4, 0, "1b000000fe00000003000000"}));
  EXPECT_EQ(Parse({g_utf8Mark}), S_OK);
  EXPECT_EQ(Value(11), (Stored{11, 4, 0, "1b0000002500000047000000"})) << "the last one stays";
}

TEST_F(IptcRecords, SkipsACharacterSetOfFewerThanThreeBytes) {
  const LogCapture log;
  EXPECT_EQ(Parse({Dataset(1, 90, Bytes{0x1B, 0x25}), Dataset(1, 90, Bytes{}), Keyword("a")}),
            S_OK);
  EXPECT_THAT(StoredKeys(), ElementsAre(22));
  EXPECT_THAT(log.Lines(), ElementsAre("m_fnParseIPTC in \n", "m_fnParseIPTC out\n"));
}

TEST_F(IptcRecords, StoresTheRecordVersionAsTwoNumbers) {
  EXPECT_EQ(Parse({Dataset(2, 0, Bytes{0x00, 0x04})}), S_OK);
  EXPECT_EQ(Value(15), (Stored{15, 4, 0, "0000000004000000"}));
  EXPECT_EQ(Parse({Dataset(2, 0, Bytes{0xFF, 0x01, 0x02})}), S_OK);
  EXPECT_EQ(Value(15), (Stored{15, 4, 0, "ff00000001000000"}));
}

TEST_F(IptcRecords, SkipsARecordVersionOfFewerThanTwoBytes) {
  EXPECT_EQ(Parse({Dataset(2, 0, Bytes{4}), Dataset(2, 0, Bytes{}), Keyword("a")}), S_OK);
  EXPECT_THAT(StoredKeys(), ElementsAre(22));
}

TEST_F(IptcRecords, GivesAllOtherEnvelopeDatasetsOneKey) {
  EXPECT_EQ(Parse({Dataset(1, 0, Bytes{0x61, 0x62}), Dataset(1, 20, "c"), Dataset(1, 255, "d")}),
            S_OK);
  EXPECT_THAT(StoredKeys(), ElementsAre(0));
  EXPECT_EQ(Value(0), TextEntry(0, LMD_W("ab\nc\nd\n")));
}

TEST_F(IptcRecords, StoresEachTextDatasetUnderItsKey) {
  const std::vector<std::pair<std::uint8_t, std::uint32_t>> datasets = {
      {5, 31},   {15, 37},  {20, 38},  {25, 22},  {40, 29},  {55, 27},  {60, 39},  {62, 40},
      {63, 41},  {80, 33},  {85, 34},  {90, 16},  {92, 26},  {95, 23},  {100, 18}, {101, 17},
      {103, 30}, {105, 20}, {110, 35}, {115, 36}, {116, 32}, {120, 19}, {122, 28},
  };
  for (const auto& [number, key] : datasets) {
    VxMetadata store;
    store.m_nParseFlags = PARSE_IPTC;
    EXPECT_EQ(store.m_fnParseIPTC(Dataset(2, number, "xy")), S_OK);
    EXPECT_THAT(Keys(store, BLOCK_IPTC), ElementsAre(key)) << int{number};
    EXPECT_EQ(Find(store, BLOCK_IPTC, key), (Stored{key, 162, 0, "780079000000"}));
  }
}

TEST_F(IptcRecords, LogsAndSkipsEveryOtherApplicationDataset) {
  const std::vector<int> known = {0,  5,  15, 20,  25,  40,  55,  60,  62,  63,  80,  85,
                                  90, 92, 95, 100, 101, 103, 105, 110, 115, 116, 120, 122};
  for (int number = 0; number < 256; ++number) {
    if (std::ranges::count(known, number) != 0) continue;
    VxMetadata store;
    store.m_nParseFlags = PARSE_IPTC;
    const LogCapture log;
    const Bytes block =
        Join({Dataset(2, static_cast<std::uint8_t>(number), "skipped"), Keyword("next")});
    EXPECT_EQ(store.m_fnParseIPTC(block), S_OK);
    EXPECT_THAT(Keys(store, BLOCK_IPTC), ElementsAre(22)) << number;
    EXPECT_EQ(log.Lines().size(), 3U) << number;
  }
}

TEST_F(IptcRecords, LogsMarkAndNumberInHexadecimal) {
  const LogCapture log;
  EXPECT_EQ(Parse({Dataset(2, 200, "skipped"), Dataset(2, 123, ""), Dataset(2, 10, "5"),
                   Keyword("next")}),
            S_OK);
  EXPECT_THAT(log.Lines(), ElementsAre("m_fnParseIPTC in \n", "!IPTC! Not Support (1c02):c8\n",
                                       "!IPTC! Not Support (1c02):7b\n",
                                       "!IPTC! Not Support (1c02):a\n", "m_fnParseIPTC out\n"));
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("next")));
}

TEST_F(IptcRecords, EndsQuietlyAtAnotherRecordOrMark) {
  for (const auto& mark : {Bytes{0x1C, 0x03}, Bytes{0x1C, 0x00}, Bytes{0x1D, 0x02}, Bytes{0, 0}}) {
    VxMetadata store;
    store.m_nParseFlags = PARSE_IPTC;
    const Bytes other = Join({mark, {kKeywordsNumber}, test::U16(1), Text("x")});
    const LogCapture log;
    EXPECT_EQ(store.m_fnParseIPTC(other), S_OK);
    EXPECT_THAT(Keys(store, BLOCK_IPTC), IsEmpty());
    EXPECT_EQ(store.m_fnParseIPTC(Join({Keyword("a"), other, Keyword("b")})), S_OK);
    EXPECT_EQ(Find(store, BLOCK_IPTC, 22), TextEntry(22, LMD_W("a")));
    EXPECT_THAT(log.Lines(), ElementsAre("m_fnParseIPTC in \n", "m_fnParseIPTC out\n",
                                         "m_fnParseIPTC in \n", "m_fnParseIPTC out\n"));
  }
}

TEST_F(IptcRecords, FailsWhenADatasetRunsPastTheEnd) {
  const LogCapture log;
  EXPECT_EQ(
      Parse({Keyword("a"), Keyword("b"), DatasetOfLength(2, kKeywordsNumber, 4, Text("xyz"))}),
      E_FAIL);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("a\nb\n"))) << "what stands before it stays";
  EXPECT_THAT(log.Lines(), ElementsAre("m_fnParseIPTC in \n"));
}

TEST_F(IptcRecords, FailsWhenASkippedDatasetRunsPastTheEnd) {
  const LogCapture log;
  EXPECT_EQ(Parse({DatasetOfLength(2, 200, 4, Text("xyz"))}), E_FAIL);
  EXPECT_EQ(Parse({DatasetOfLength(1, 90, 4, Text("xyz"))}), E_FAIL);
  EXPECT_THAT(log.Lines(), ElementsAre("m_fnParseIPTC in \n", "m_fnParseIPTC in \n"));
}

TEST_F(IptcRecords, TakesDataThatReachesTheVeryEnd) {
  EXPECT_EQ(Parse({DatasetOfLength(2, kKeywordsNumber, 3, Text("xyz"))}), S_OK);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("xyz")));
}

TEST_F(IptcRecords, RejectsExtendedDatasets) {
  EXPECT_EQ(Parse({Keyword("a"), DatasetOfLength(2, kKeywordsNumber, 0x8004, test::Zeros(40000))}),
            E_FAIL);
  EXPECT_EQ(Value(kKeywords), TextEntry(22, LMD_W("a")));
  EXPECT_EQ(Parse({DatasetOfLength(2, 200, 0xFFFF, test::Zeros(70000))}), E_FAIL);
}

TEST_F(IptcRecords, TakesTheLongestOrdinaryDataset) {
  const std::string text(0x7FFF, 'x');
  EXPECT_EQ(Parse({Dataset(2, kCaptionNumber, text)}), S_OK);
  const auto stored = Value(kCaption);
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->hex.size(), (0x7FFF + 1U) * 4);
}

TEST_F(IptcRecords, IgnoresARestOfFewerThanSixBytes) {
  for (const Bytes& rest : {Bytes{}, Bytes{1}, Bytes{0x1C, 2, 5, 0, 9}, Bytes{9, 9, 9, 9, 9}}) {
    VxMetadata store;
    store.m_nParseFlags = PARSE_IPTC;
    EXPECT_EQ(store.m_fnParseIPTC(Join({Keyword("a"), rest})), S_OK);
    EXPECT_EQ(Find(store, BLOCK_IPTC, 22), TextEntry(22, LMD_W("a")));
  }
}

// The last five bytes of a block never begin a dataset, so an empty one there is not seen.
TEST_F(IptcRecords, SeesAnEmptyDatasetOnlyBeforeOtherBytes) {
  EXPECT_EQ(Parse({Keyword("a"), Dataset(2, 5, "")}), S_OK);
  EXPECT_THAT(StoredKeys(), ElementsAre(22));
  EXPECT_EQ(Parse({Dataset(2, 5, ""), {0}}), S_OK);
  EXPECT_EQ(Value(31), (Stored{31, 162, 0, "0000"}));
}

TEST_F(IptcRecords, ReadsEveryPrefixOfABlock) {
  const std::vector<Bytes> datasets = {
      g_utf8Mark,     Dataset(2, 0, Bytes{0, 4}), Keyword("one"),
      Keyword("two"), Dataset(2, 200, "unknown"), Dataset(2, kCaptionNumber, "caption")};
  Bytes block;
  std::vector<std::size_t> ends;
  for (const Bytes& dataset : datasets) {
    block.insert(block.end(), dataset.begin(), dataset.end());
    ends.push_back(block.size());
  }
  for (std::size_t size = 0; size <= block.size(); ++size) {
    VxMetadata store;
    store.m_nParseFlags = PARSE_IPTC;
    const auto whole =
        static_cast<std::size_t>(std::ranges::upper_bound(ends, size) - ends.begin());
    const std::size_t rest = size - (whole == 0 ? 0 : ends[whole - 1]);
    EXPECT_EQ(store.m_fnParseIPTC(
                  Bytes(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(size))),
              rest >= 6 ? E_FAIL : S_OK)
        << size;
    EXPECT_EQ(Find(store, BLOCK_IPTC, 11).has_value(), whole >= 1) << size;
    EXPECT_EQ(Find(store, BLOCK_IPTC, 15).has_value(), whole >= 2) << size;
    EXPECT_EQ(Find(store, BLOCK_IPTC, 22).has_value(), whole >= 3) << size;
    if (whole >= 4) {
      EXPECT_EQ(Find(store, BLOCK_IPTC, 22), TextEntry(22, LMD_W("one\ntwo\n"))) << size;
    }
    EXPECT_EQ(Find(store, BLOCK_IPTC, 19).has_value(), whole >= 6) << size;
  }
}

// --- Many keywords ---

Bytes ManyKeywords(std::size_t count) {
  const Bytes keyword = Keyword("k");
  Bytes block;
  block.reserve(count * keyword.size());
  for (std::size_t i = 0; i < count; ++i) {
    block.insert(block.end(), keyword.begin(), keyword.end());
  }
  return block;
}

// Whether the store holds "k", a line feed, "k", a line feed, ... and a final zero.
testing::AssertionResult HoldsKeywords(VxMetadata& store, std::size_t count) {
  const TagEntry* entry = store.m_fnGetBlock(BLOCK_IPTC)->Find(kKeywords);
  if (entry == nullptr) return testing::AssertionFailure() << "no entry";
  const auto bytes = TagBytes(*entry);
  if (bytes.size() != count * 4 + 2) {
    return testing::AssertionFailure() << bytes.size() << " bytes";
  }
  constexpr std::array<std::uint8_t, 4> kLine = {'k', 0, '\n', 0};
  for (std::size_t i = 0; i < count; ++i) {
    if (!std::ranges::equal(bytes.subspan(i * 4, 4), kLine)) {
      return testing::AssertionFailure() << "line " << i;
    }
  }
  return testing::AssertionSuccess();
}

TEST_F(IptcRecords, JoinsTenThousandKeywords) {
  EXPECT_EQ(Parse(ManyKeywords(10'000)), S_OK);
  EXPECT_TRUE(HoldsKeywords(m_store, 10'000));
}

// Joining them one by one would copy two thousand gigabytes.
TEST_F(IptcRecords, JoinsAMillionKeywordsOfATiffTag) {
  const Tiff tiff(ByteOrder::LittleEndian);
  StoreFile file(tiff.Build({tiff.Undefined(33723, ManyKeywords(1'000'000))}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(HoldsKeywords(file.Store(), 1'000'000));
}

TEST_F(IptcRecords, CountsOnlyWhatABlockStoresAgainstTheBudget) {
  // 10,000 lines of four bytes and the final zero, and not a byte more.
  ASSERT_TRUE(m_store.Budget().TakeBytes(kMaxStoredBytes - 40'002));
  EXPECT_EQ(Parse(ManyKeywords(10'000)), S_OK);
  EXPECT_TRUE(HoldsKeywords(m_store, 10'000));
  EXPECT_FALSE(m_store.Budget().TakeBytes(1));
}

TEST_F(IptcRecords, LeavesATextWithoutDataWhenTheBudgetIsUsedUp) {
  ASSERT_TRUE(m_store.Budget().TakeBytes(kMaxStoredBytes));
  EXPECT_EQ(Parse({Keyword("a")}), S_OK);
  EXPECT_EQ(Parse({Keyword("b")}), S_OK);
  const TagEntry* entry = m_store.m_fnGetBlock(BLOCK_IPTC)->Find(kKeywords);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->m_nType, 162U);
  EXPECT_EQ(entry->m_pData, nullptr);
}

// --- Where photographs keep their blocks ---

TEST_F(IptcRecords, ReadsThePhotoshopResourceOfAJpeg) {
  const Bytes block = Join({g_utf8Mark, Keyword("caf\xC3\xA9"), Keyword("b")});
  StoreFile file(Jpeg().Photoshop(test::PhotoshopResource(0x0404, block)).Scan().Build());
  ASSERT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IPTC, 22), TextEntry(22, LMD_W("caf\u00E9\nb\n")));
}

TEST_F(IptcRecords, JoinsTheBlocksOfSeveralSegments) {
  const auto segment = [](std::string_view text) {
    return test::PhotoshopResource(0x0404, Keyword(text));
  };
  StoreFile file(Jpeg().Photoshop(segment("a")).Photoshop(segment("b")).Scan().Build());
  ASSERT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IPTC, 22), TextEntry(22, LMD_W("a\nb\n")));
}

TEST_F(IptcRecords, GatesTheReaderItselfByTheFlag) {
  StoreFile file(Jpeg().Photoshop(test::PhotoshopResource(0x0404, Keyword("a"))).Scan().Build(),
                 test::kReadAll & ~static_cast<std::uint32_t>(PARSE_IPTC));
  ASSERT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_THAT(Keys(file.Store(), BLOCK_IPTC), IsEmpty());
}

// --- The table ---

TEST(IptcDatasets, HasNoKeyTwice) {
  std::vector<std::uint32_t> keys;
  for (const IptcDataset& row : kIptcDatasets) keys.push_back(row.key);
  std::ranges::sort(keys);
  EXPECT_EQ(std::ranges::adjacent_find(keys), keys.end());
  EXPECT_THAT(keys, testing::Not(testing::Contains(0U)));
}

TEST(IptcDatasets, FindsARowByRecordAndNumber) {
  ASSERT_NE(FindIptcDataset(2, 25), nullptr);
  EXPECT_EQ(FindIptcDataset(2, 25)->name, "Keywords");
  ASSERT_NE(FindIptcDataset(1, 90), nullptr);
  EXPECT_EQ(FindIptcDataset(1, 90)->key, 11U);
  EXPECT_EQ(FindIptcDataset(1, 25), nullptr);
  EXPECT_EQ(FindIptcDataset(2, 123), nullptr);
  EXPECT_EQ(FindIptcDataset(2, 255), nullptr);
  EXPECT_EQ(FindIptcDataset(0, 90), nullptr);
  EXPECT_EQ(FindIptcDataset(3, 25), nullptr);
}

}  // namespace
