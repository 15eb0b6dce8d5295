// The maker note: its entries, and the summary of what it says in terms that all vendors share.

#include <array>
#include <bit>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/TypeSizes.h"
#include "exif/VxMetadata.h"
#include "makernote/SummaryKeys.h"
#include "makernote/VxMakerNoteParser.h"

namespace {

constexpr std::uint32_t kMakeTag = 271;
constexpr std::uint32_t kModelTag = 272;
constexpr std::uint32_t kSoftwareTag = 305;
constexpr std::uint32_t kFocalLengthTag = 0x920A;

// Writes the fields of a summary that are present.
class SummaryWriter {
 public:
  explicit SummaryWriter(VxMetadata& store)
      : m_store(store), m_table(*store.m_fnGetBlock(BLOCK_MAKERNOTE_SUMMARY)) {}

  // Stores a value even when it is 0.
  void Always(std::uint32_t key, std::uint32_t value) {
    Store(key, TYPE_LONG, 1, std::bit_cast<std::array<std::uint8_t, 4>>(value));
  }

  void Number(std::uint32_t key, std::uint32_t value) {
    if (value != 0) Always(key, value);
  }

  void Number(std::uint32_t key, std::int32_t value) {
    if (value == 0) return;
    Store(key, TYPE_SLONG, 1, std::bit_cast<std::array<std::uint8_t, 4>>(value));
  }

  void Rational(std::uint32_t key, const MakerNoteRational& value) {
    if (value.numerator == 0) return;
    const std::array numbers = {value.numerator, value.denominator};
    Store(key, TYPE_RATIONAL, 1, std::bit_cast<std::array<std::uint8_t, 8>>(numbers));
  }

  void Text(std::uint32_t key, const std::unique_ptr<char[]>& text) {
    if (text == nullptr) return;
    const std::string_view characters = text.get();
    std::vector<std::uint8_t> bytes(characters.begin(), characters.end());
    bytes.push_back(0);
    Store(key, TYPE_ASCII, static_cast<std::uint32_t>(bytes.size()), bytes);
  }

 private:
  void Store(std::uint32_t key, std::uint32_t type, std::uint32_t count,
             std::span<const std::uint8_t> bytes) {
    TagEntry& entry = m_store.m_fnFindOrInsert(m_table, key);
    SetTagValue(entry, key, type, bytes, m_store.Memory());
    entry.m_nCount = count;
  }

  VxMetadata& m_store;
  TagMap& m_table;
};

// Makes `target` a copy of an entry of the vendor parser. One without data stays without.
void DuplicateEntry(TagEntry& target, const TagEntry& source, const ValueMemory& memory) {
  SetTagValue(target, source.m_nTag, source.m_nType, TagBytes(source), memory);
  if (source.m_pData == nullptr) DropTagData(target);
  target.m_nCount = source.m_nCount;
  target.m_nSize = source.m_nSize;
}

void StoreMakerNoteEntries(VxMetadata& store, CVxMakerNoteParser& parser) {
  TagMap& table = *store.m_fnGetBlock(BLOCK_MAKERNOTE);
  for (bool more = parser.FirstEntry(); more; more = parser.NextEntry()) {
    const TagEntry* entry = parser.CurrentEntry();
    if (entry == nullptr) return;
    DuplicateEntry(store.m_fnFindOrInsert(table, entry->m_nTag), *entry, store.Memory());
  }
}

}  // namespace

HRESULT VxMetadata::m_fnParseMakerNote(std::uint32_t base, ByteOrder order, std::uint32_t segEnd) {
  if ((m_nParseFlags & (PARSE_MAKERNOTE_SUMMARY | PARSE_MAKERNOTE)) == 0) return S_OK;
  if (!m_pFile) return E_POINTER;

  std::string make;
  std::string model;
  if (const HRESULT result = m_fnGetTagString(BLOCK_IFD0, kMakeTag, make); result != S_OK) {
    return result;
  }
  if (const HRESULT result = m_fnGetTagString(BLOCK_IFD0, kModelTag, model); result != S_OK) {
    return result;
  }
  if (!m_pMakerNote || make.empty() || model.empty()) return S_OK;
  if (!m_pMakerNote->SetCameraInfo(std::move(make), std::move(model))) return S_OK;

  std::uint32_t focalLength = 0;
  std::string software;
  m_fnGetTagShort(BLOCK_EXIF, kFocalLengthTag, &focalLength);
  m_fnGetTagString(BLOCK_IFD0, kSoftwareTag, software);
  m_pMakerNote->SetExtraInfo(std::move(software), static_cast<std::uint16_t>(focalLength));

  const auto position = static_cast<std::uint32_t>(m_pFile->Position());
  auto info = m_pMakerNote->ParseMakerNote(*m_pFile, base, order, position, segEnd);
  if (info) {
    m_fnStoreMakerNoteSummary(*info);
    m_pMakerNote->FreeMakerNoteInfo(std::move(info));
  }
  StoreMakerNoteEntries(*this, *m_pMakerNote);
  m_pFile->Seek(position);
  return S_OK;
}

void VxMetadata::m_fnStoreMakerNoteSummary(const MakerNoteInfo& info) {
  SummaryWriter writer(*this);
  writer.Always(SUMMARY_VENDOR, info.nVendorCode);
  writer.Text(SUMMARY_LENS_NAME, info.pszLensName);
  writer.Text(SUMMARY_LENS_MODEL, info.pszLensModel);
  writer.Text(SUMMARY_PICTURE_STYLE, info.pszPictureStyle);
  writer.Number(SUMMARY_VENDOR_VALUE_1, info.nVendorValue1);
  writer.Number(SUMMARY_VENDOR_VALUE_2, info.nVendorValue2);
  writer.Number(SUMMARY_ISO, info.nIso);
  writer.Rational(SUMMARY_VENDOR_RATIONAL, info.vendorRational);
  writer.Rational(SUMMARY_F_NUMBER, info.fNumber);
  writer.Number(SUMMARY_LENS_ID, info.nLensId);
  writer.Rational(SUMMARY_SHORTEST_FOCAL_LENGTH, info.lensInfo.shortestFocalLength);
  writer.Rational(SUMMARY_LONGEST_FOCAL_LENGTH, info.lensInfo.longestFocalLength);
  writer.Rational(SUMMARY_F_NUMBER_AT_SHORTEST, info.lensInfo.fNumberAtShortest);
  writer.Rational(SUMMARY_F_NUMBER_AT_LONGEST, info.lensInfo.fNumberAtLongest);

  if (m_pThumbnail || !m_bKeepsThumbnail) return;
  if (info.pPreview == nullptr || info.nPreviewSize == 0) return;
  SetThumbnail({info.pPreview.get(), static_cast<std::size_t>(info.nPreviewSize)});
  m_fnScanThumbnailSize();
}
