// IPTC-IIM datasets (IIM 4.2, section 1.5): a mark with the record, a number, a length, data.

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "base/ByteCursor.h"
#include "base/TypeSizes.h"
#include "base/WideText.h"
#include "core/DebugLog.h"
#include "exif/IptcDatasets.h"
#include "exif/VxMetadata.h"
#include "xmp/TextConversion.h"

namespace {

constexpr std::uint16_t kEnvelopeMark = 0x1C01;
constexpr std::uint16_t kApplicationMark = 0x1C02;

// By design: fewer bytes end the block, so that a dataset without data at its very end is not seen.
constexpr std::size_t kShortestRest = 6;

// A length with its high bit set announces an extended dataset, which is not supported.
constexpr std::uint16_t kMaxLength = 0x7FFF;

constexpr std::uint32_t kAnsiCodePage = 0;
constexpr std::uint32_t kUtf8CodePage = 65001;

// How a block announces UTF-8 (IIM 4.2, dataset 1:90).
constexpr std::array<std::uint8_t, 3> kUtf8Escape = {0x1B, 0x25, 0x47};

constexpr std::size_t kRecordVersionBytes = 2;

constexpr WCHAR kLineFeed = 0x000A;

using Data = std::span<const std::uint8_t>;

// The data up to its first zero as UTF-16.
WideString Decode(Data data, std::uint32_t codePage) {
  const std::string_view text(reinterpret_cast<const char*>(data.data()), data.size());
  return ToWideString(text.substr(0, text.find('\0')), codePage);
}

void AppendLine(WideString& text, const WideString& line) {
  if (!text.ends_with(kLineFeed)) text.push_back(kLineFeed);
  text.append(line);
  text.push_back(kLineFeed);
}

// The datasets of one block. They reach the store when all are read, so that joining repeated ones
// is linear and only what they become counts against the budget.
class IptcBlock {
 public:
  explicit IptcBlock(VxMetadata& store)
      : m_store(store), m_table(*store.m_fnGetBlock(BLOCK_IPTC)) {}

  // E_FAIL when a dataset runs past the end; those before it count.
  HRESULT Read(Data bytes);

  void Store();

 private:
  void Take(std::uint16_t mark, std::uint8_t number, Data data);
  void TakeCharacterSet(Data data);
  void TakeNumbers(std::uint32_t key, Data data, std::size_t count);
  void TakeText(std::uint32_t key, Data data);

  void StoreValue(std::uint32_t key, std::uint32_t type, Data bytes);

  struct Text {
    std::uint32_t key;
    WideString text;
  };

  VxMetadata& m_store;
  TagMap& m_table;
  std::uint32_t m_codePage = kAnsiCodePage;
  std::map<std::uint32_t, std::vector<std::uint32_t>> m_numbers;
  std::vector<Text> m_texts;  // ascending by key, of which there are few
};

HRESULT IptcBlock::Read(Data bytes) {
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  while (cursor.Remaining() >= kShortestRest) {
    const std::uint16_t mark = cursor.ReadU16();
    if (mark != kEnvelopeMark && mark != kApplicationMark) return S_OK;
    const std::uint8_t number = cursor.ReadU8();
    const std::uint16_t length = cursor.ReadU16();
    if (length > kMaxLength || length > cursor.Remaining()) return E_FAIL;
    Take(mark, number, cursor.ReadBytes(length));
  }
  return S_OK;
}

void IptcBlock::Take(std::uint16_t mark, std::uint8_t number, Data data) {
  const IptcDataset* row = FindIptcDataset(mark & 0xFF, number);
  if (row == nullptr && mark == kApplicationMark) {
    DebugLog("!IPTC! Not Support (%x):%x\n", unsigned{mark}, unsigned{number});
    return;
  }
  // By design: all other datasets of the envelope share one key.
  const std::uint32_t key = row == nullptr ? IPTC_OTHER_ENVELOPE : row->key;
  if (key == IPTC_CODED_CHARACTER_SET) return TakeCharacterSet(data);
  if (key == IPTC_RECORD_VERSION) return TakeNumbers(key, data, kRecordVersionBytes);
  TakeText(key, data);
}

// Any other character set leaves the code page as it was.
void IptcBlock::TakeCharacterSet(Data data) {
  if (data.size() < kUtf8Escape.size()) return;
  if (std::ranges::equal(data.first(kUtf8Escape.size()), kUtf8Escape)) m_codePage = kUtf8CodePage;
  TakeNumbers(IPTC_CODED_CHARACTER_SET, data, kUtf8Escape.size());
}

// Keeps the first bytes, each as a 32-bit number; data that is shorter is skipped.
void IptcBlock::TakeNumbers(std::uint32_t key, Data data, std::size_t count) {
  if (data.size() < count) return;
  const Data first = data.first(count);
  m_numbers[key].assign(first.begin(), first.end());
}

// Repeated datasets become the lines of one text. By design the first is in the block's code page
// and every later one in UTF-8, whatever the block says.
void IptcBlock::TakeText(std::uint32_t key, Data data) {
  auto found = std::ranges::lower_bound(m_texts, key, {}, &Text::key);
  if (found == m_texts.end() || found->key != key) {
    const TagEntry* stored = m_table.Find(key);
    if (stored == nullptr) {
      m_texts.insert(found, {key, Decode(data, m_codePage)});
      return;
    }
    found = m_texts.insert(found, {key, LoadWideText(TagBytes(*stored))});
  }
  AppendLine(found->text, Decode(data, kUtf8CodePage));
}

void IptcBlock::Store() {
  for (const auto& [key, numbers] : m_numbers) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(numbers.data());
    StoreValue(key, TYPE_LONG, {bytes, numbers.size() * sizeof(numbers[0])});
  }
  for (const auto& [key, text] : m_texts) {
    StoreValue(key, TYPE_WIDE_TEXT, WideTextBytes(text));
  }
}

void IptcBlock::StoreValue(std::uint32_t key, std::uint32_t type, Data bytes) {
  SetTagValue(m_store.m_fnFindOrInsert(m_table, key), key, type, bytes, m_store.Budget());
}

}  // namespace

HRESULT VxMetadata::m_fnParseIPTC(std::span<const std::uint8_t> bytes) {
  if ((m_nParseFlags & PARSE_IPTC) == 0) return S_OK;
  DebugLog("m_fnParseIPTC in \n");
  IptcBlock block(*this);
  const HRESULT result = block.Read(bytes);
  block.Store();
  if (result == S_OK) DebugLog("m_fnParseIPTC out\n");
  return result;
}
