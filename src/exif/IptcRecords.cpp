// IPTC-IIM datasets (IIM 4.2, section 1.5): a mark with the record, a number, a length, data.

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string_view>

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

constexpr WCHAR kLineFeed = 0x000A;

using Data = std::span<const std::uint8_t>;

// The first bytes of a dataset, each as a 32-bit number.
template <std::size_t kCount>
using Numbers = std::optional<std::array<std::uint32_t, kCount>>;

// Data that is shorter is skipped.
template <std::size_t kCount>
void TakeNumbers(Data data, Numbers<kCount>& numbers) {
  if (data.size() >= kCount) std::copy_n(data.begin(), kCount, numbers.emplace().begin());
}

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
  void TakeText(std::uint32_t key, Data data);

  template <std::size_t kCount>
  void StoreNumbers(std::uint32_t key, const Numbers<kCount>& numbers);
  void StoreValue(std::uint32_t key, std::uint32_t type, Data bytes);

  struct Text {
    bool isSet = false;
    WideString text;
  };

  VxMetadata& m_store;
  TagMap& m_table;
  std::uint32_t m_codePage = kAnsiCodePage;
  Numbers<kUtf8Escape.size()> m_characterSet;
  Numbers<2> m_recordVersion;
  std::array<Text, kIptcKeyEnd> m_texts;  // by their key
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
  if (key == IPTC_RECORD_VERSION) return TakeNumbers(data, m_recordVersion);
  TakeText(key, data);
}

// Any other character set leaves the code page as it was.
void IptcBlock::TakeCharacterSet(Data data) {
  if (data.size() < kUtf8Escape.size()) return;
  if (std::ranges::equal(data.first(kUtf8Escape.size()), kUtf8Escape)) m_codePage = kUtf8CodePage;
  TakeNumbers(data, m_characterSet);
}

// Repeated datasets become the lines of one text. By design the first is in the block's code page
// and every later one in UTF-8, whatever the block says.
void IptcBlock::TakeText(std::uint32_t key, Data data) {
  auto& [isSet, text] = m_texts[key];
  if (!isSet) {
    const TagEntry* stored = m_table.Find(key);
    text = stored == nullptr ? Decode(data, m_codePage) : LoadWideText(TagBytes(*stored));
    isSet = true;
    if (stored == nullptr) return;
  }
  AppendLine(text, Decode(data, kUtf8CodePage));
}

void IptcBlock::Store() {
  StoreNumbers(IPTC_CODED_CHARACTER_SET, m_characterSet);
  StoreNumbers(IPTC_RECORD_VERSION, m_recordVersion);
  for (std::uint32_t key = 0; key < m_texts.size(); ++key) {
    if (m_texts[key].isSet) StoreValue(key, TYPE_WIDE_TEXT, WideTextBytes(m_texts[key].text));
  }
}

template <std::size_t kCount>
void IptcBlock::StoreNumbers(std::uint32_t key, const Numbers<kCount>& numbers) {
  if (!numbers) return;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(numbers->data());
  StoreValue(key, TYPE_LONG, {bytes, sizeof(*numbers)});
}

void IptcBlock::StoreValue(std::uint32_t key, std::uint32_t type, Data bytes) {
  SetTagValue(m_store.m_fnFindOrInsert(m_table, key), key, type, bytes, m_store.Memory());
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
