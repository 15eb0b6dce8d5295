// The TIFF header and the directories that hang from it (TIFF 6.0, section 2; EXIF 2.32,
// section 4.6).

#include <algorithm>
#include <array>

#include "base/TypeSizes.h"
#include "exif/DirectoryWalk.h"
#include "exif/VxMetadata.h"

namespace {

constexpr std::uint16_t kTiffMagic = 42;

// A magic that ends the reading; by design any other wrong one is tolerated.
constexpr std::uint32_t kStopMagic = 26;

constexpr std::uint16_t kMakeTag = 271;

// Makes the 32-bit offset at the stream's position a file position and says whether to follow it.
bool FollowOffset(FileStream& stream, const TiffFrame& frame) {
  const std::uint32_t offset = stream.ReadU32(frame.order);
  const std::uint32_t position = frame.tiffBase + offset;
  if (offset == 0 || !frame.Allows(position)) return false;
  stream.Seek(position);
  return true;
}

std::span<const std::uint8_t> ReadValue(FileStream& stream, const DirectoryEntry& entry) {
  return stream.ReadBlock(ValueSize(entry.type, entry.count));
}

// For directories of which no entries are as good as some.
HRESULT ReadDirectory(VxMetadata& store, TagMap& table, const TiffFrame& frame,
                      EntryFilter filter) {
  const HRESULT result = WalkDirectory(store, table, frame, filter);
  return FAILED(result) ? result : S_OK;
}

// --- IFD0: what is done with a tag instead of storing it, with the stream at the value ---

void NoteEmbeddedJpeg(VxMetadata& store, const TiffFrame&, const DirectoryEntry& entry) {
  if (entry.type == TYPE_UNDEFINED) store.m_nEmbeddedJpegPos = entry.valuePosition;
}

void ReadSubIfds(VxMetadata& store, const TiffFrame& frame, const DirectoryEntry& entry) {
  FileStream& stream = *store.m_pFile;
  for (std::uint32_t i = 0; i < entry.count; ++i) {
    if (!stream.Budget().TakeEntry()) return;
    stream.Seek(entry.valuePosition + std::uint64_t{4} * i);
    const std::uint32_t offset = stream.ReadU32(frame.order);
    stream.Seek(static_cast<std::uint32_t>(frame.tiffBase + offset));
    const auto block = static_cast<std::int32_t>(kSubIfdBlock | i);
    store.m_fnParseSubIFD(frame, store.FindOrAddSubIfd(block));
  }
}

void ReadXmpPacket(VxMetadata& store, const TiffFrame&, const DirectoryEntry& entry) {
  if ((store.m_nParseFlags & PARSE_XMP) == 0) return;
  const auto packet = ReadValue(*store.m_pFile, entry);
  store.ParseXmp(packet.data(), static_cast<std::uint32_t>(packet.size()));
}

void ReadIptcRecords(VxMetadata& store, const TiffFrame&, const DirectoryEntry& entry) {
  if ((store.m_nParseFlags & PARSE_IPTC) == 0) return;
  store.m_fnParseIPTC(ReadValue(*store.m_pFile, entry));
}

void StoreLeafMake(VxMetadata& store, const TiffFrame&, const DirectoryEntry&) {
  TagMap& table = *store.m_fnGetBlock(BLOCK_IFD0);
  if (table.Contains(kMakeTag)) return;
  constexpr std::array<std::uint8_t, 5> kLeaf = {'L', 'e', 'a', 'f', 0};
  SetTagValue(store.m_fnFindOrInsert(table, kMakeTag), kMakeTag, TYPE_ASCII, kLeaf, store.Memory());
}

void ReadLeafRecords(VxMetadata& store, const TiffFrame& frame, const DirectoryEntry& entry) {
  store.m_fnParseLeafData(entry.valuePosition, frame.order);
  StoreLeafMake(store, frame, entry);
}

void ReadPhotoshopResources(VxMetadata& store, const TiffFrame&, const DirectoryEntry& entry) {
  store.m_fnParsePhotoshopIRB(ReadValue(*store.m_pFile, entry));
}

void ReadExifDirectory(VxMetadata& store, const TiffFrame& frame, const DirectoryEntry&) {
  if (FollowOffset(*store.m_pFile, frame)) store.m_fnParseExifIFD(frame);
}

void ReadGpsDirectory(VxMetadata& store, const TiffFrame& frame, const DirectoryEntry&) {
  if (FollowOffset(*store.m_pFile, frame)) store.m_fnParseGpsIFD(frame);
}

void ReadIccProfile(VxMetadata& store, const TiffFrame&, const DirectoryEntry& entry) {
  if ((store.m_nParseFlags & PARSE_ICC) == 0) return;
  store.m_fnParseICCProfile(ReadValue(*store.m_pFile, entry));
}

// The maker note that a DNG converter carried over: its offsets count from the value itself.
void ReadDngPrivateData(VxMetadata& store, const TiffFrame& frame, const DirectoryEntry& entry) {
  if (!store.m_fnGetBlock(BLOCK_MAKERNOTE)->IsEmpty()) return;
  store.m_fnParseMakerNote(entry.valuePosition, frame.order, frame.segEnd);
}

struct SpecialTag {
  std::uint16_t tag;
  void (*handle)(VxMetadata&, const TiffFrame&, const DirectoryEntry&);
};

// clang-format off
constexpr std::array kIfd0SpecialTags = {
    SpecialTag{0x002E, NoteEmbeddedJpeg},
    SpecialTag{0x014A, ReadSubIfds},
    SpecialTag{0x02BC, ReadXmpPacket},
    SpecialTag{0x83BB, ReadIptcRecords},
    SpecialTag{0x85FF, StoreLeafMake},
    SpecialTag{0x8606, ReadLeafRecords},
    SpecialTag{0x8649, ReadPhotoshopResources},
    SpecialTag{0x8769, ReadExifDirectory},
    SpecialTag{0x8773, ReadIccProfile},
    SpecialTag{0x8825, ReadGpsDirectory},
    SpecialTag{0xC634, ReadDngPrivateData},
};
// clang-format on

constexpr std::uint64_t LowBits(std::uint16_t tag) {
  return std::uint64_t{1} << tag % 64;
}

// The low bits of the special tags, by which most others are turned away at once.
constexpr std::uint64_t kIfd0SpecialBits = [] {
  std::uint64_t bits = 0;
  for (const SpecialTag& special : kIfd0SpecialTags) bits |= LowBits(special.tag);
  return bits;
}();

const SpecialTag* FindIfd0SpecialTag(std::uint16_t tag) {
  if ((kIfd0SpecialBits & LowBits(tag)) == 0) return nullptr;
  const auto special = std::ranges::find(kIfd0SpecialTags, tag, &SpecialTag::tag);
  return special == kIfd0SpecialTags.end() ? nullptr : &*special;
}

bool FilterIfd0Entry(VxMetadata& store, const TiffFrame& frame, const DirectoryEntry& entry) {
  const SpecialTag* const special = FindIfd0SpecialTag(entry.tag);
  if (special == nullptr) return true;
  special->handle(store, frame, entry);
  return false;
}

// An entry that points to more is stored nevertheless.
bool FilterExifEntry(VxMetadata& store, const TiffFrame& frame, const DirectoryEntry& entry) {
  constexpr std::uint16_t kInteropTag = 0xA005;
  constexpr std::uint16_t kMakerNoteTag = 0x927C;
  FileStream& stream = *store.m_pFile;
  switch (entry.tag) {
    case kInteropTag:
      if (FollowOffset(stream, frame)) store.m_fnParseInteropIFD(frame);
      break;
    case kMakerNoteTag:
      store.m_fnParseMakerNote(frame.tiffBase, frame.order, frame.segEnd);
      break;
    default:
      return true;
  }
  stream.Seek(entry.valuePosition);
  return true;
}

bool FilterInteropEntry(VxMetadata&, const TiffFrame&, const DirectoryEntry& entry) {
  constexpr std::uint16_t kIndexTag = 0x0001;
  constexpr std::uint16_t kVersionTag = 0x0002;
  return entry.tag == kIndexTag || entry.tag == kVersionTag;
}

bool TakeAnyEntry(VxMetadata&, const TiffFrame&, const DirectoryEntry&) {
  return true;
}

}  // namespace

HRESULT VxMetadata::m_fnParseTiffHeader(std::uint32_t tiffBase, std::uint32_t segStart,
                                        std::uint32_t segEnd) {
  FileStream& stream = *m_pFile;
  stream.Seek(tiffBase);
  const std::uint16_t mark = stream.ReadU16(ByteOrder::BigEndian);
  const auto order = static_cast<ByteOrder>(mark);
  if (order != ByteOrder::LittleEndian && order != ByteOrder::BigEndian) return E_FAIL;

  const TiffFrame frame{tiffBase, order, segStart, segEnd};
  const std::uint16_t magic = stream.ReadU16(order);
  if (magic != kTiffMagic) m_nTiffMagic = magic;
  if (m_nTiffMagic == kStopMagic) return S_OK;

  const std::uint32_t offset = stream.ReadU32(order);
  if (offset == 0) return S_OK;
  stream.Seek(static_cast<std::uint32_t>(tiffBase + offset));
  return m_fnParseIFD0(frame);
}

HRESULT VxMetadata::m_fnParseIFD0(const TiffFrame& frame) {
  const HRESULT result = WalkDirectory(*this, *m_fnGetBlock(BLOCK_IFD0), frame, FilterIfd0Entry);
  if (FAILED(result)) return result;

  if (m_bReadsIfd1 && FollowOffset(*m_pFile, frame)) m_fnParseIFD1(frame);
  return result;
}

HRESULT VxMetadata::m_fnParseExifIFD(const TiffFrame& frame) {
  constexpr std::uint32_t kReaders = PARSE_EXIF | PARSE_MAKERNOTE_SUMMARY | PARSE_MAKERNOTE;
  if ((m_nParseFlags & kReaders) == 0) return S_OK;
  return ReadDirectory(*this, *m_fnGetBlock(BLOCK_EXIF), frame, FilterExifEntry);
}

HRESULT VxMetadata::m_fnParseGpsIFD(const TiffFrame& frame) {
  if ((m_nParseFlags & PARSE_GPS) == 0) return S_OK;
  return ReadDirectory(*this, *m_fnGetBlock(BLOCK_GPS), frame, TakeAnyEntry);
}

// The interoperability tags live in the table of the EXIF directory.
HRESULT VxMetadata::m_fnParseInteropIFD(const TiffFrame& frame) {
  return ReadDirectory(*this, *m_fnGetBlock(BLOCK_EXIF), frame, FilterInteropEntry);
}

HRESULT VxMetadata::m_fnParseSubIFD(const TiffFrame& frame, TagMap& table) {
  return ReadDirectory(*this, table, frame, TakeAnyEntry);
}
