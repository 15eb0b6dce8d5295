#include "writer/VxMetadataWriter.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <lumidex/ResultCodes.h>

#include "base/ByteOrder.h"
#include "exif/IptcDatasets.h"
#include "exif/JpegMarkers.h"
#include "writer/WriterTags.h"

namespace {

constexpr std::uint32_t kIfd0Offset = 8;
constexpr std::size_t kEntrySize = 12;
constexpr std::uint32_t kValueOffset = 8;   // of the value or its offset in an entry
constexpr std::size_t kDirectoryFrame = 6;  // the entry count and the next-directory field

// A pointer before its directory is known.
constexpr std::array<std::uint8_t, 4> kNoOffset = {};
constexpr FieldValue kPointer = {TYPE_LONG, kNoOffset};

// The values of the thumbnail's directory as records hold them.
constexpr std::array<std::uint8_t, 4> kJpegCompression = {6, 0, 0, 0};
constexpr std::array<std::uint8_t, 4> kInch = {2, 0, 0, 0};
constexpr std::array<std::uint8_t, 8> kResolution = {72, 0, 0, 0, 1, 0, 0, 0};

// By design an identifier of its own, which belongs to three groups.
constexpr std::uint32_t kSeparateId = 0xAB09;
constexpr std::array<std::uint32_t, 3> kSeparateGroups = {9, 10, 11};

// The dataset of an application record, or null when the writer drops it.
const IptcDataset* DatasetOf(std::uint32_t id) noexcept {
  constexpr std::uint8_t kApplicationRecord = 2;
  const auto isMeant = [id](const IptcDataset& row) {
    return row.record == kApplicationRecord && row.key == id;
  };
  const auto found = std::ranges::find_if(kIptcDatasets, isMeant);
  return found != kIptcDatasets.end() ? &*found : nullptr;
}

// Where the values of a directory begin, counted from its own start.
constexpr std::size_t ValueArea(std::size_t entries) noexcept {
  return kDirectoryFrame + kEntrySize * entries;
}

}  // namespace

void VxMetadataWriter::SetThumbnail(const std::uint8_t* bytes, std::uint32_t length) noexcept {
  m_isBuilt = false;
  m_thumbnail = {};
  if (bytes != nullptr) m_thumbnail = {bytes, length};
}

HRESULT VxMetadataWriter::SetRecords(const CInfoRecord* records, std::uint32_t count) {
  m_isBuilt = false;
  for (const CInfoRecord& record : std::span(records, count)) {
    if (record.m_nSize != 0 && record.m_pData != nullptr) SortRecord(record);
  }
  if (!m_exif.empty()) SetField(m_ifd0, kExifPointerTag, kPointer);
  if (!m_gps.empty()) SetField(m_ifd0, kGpsPointerTag, kPointer);
  return S_OK;
}

void VxMetadataWriter::SortRecord(const CInfoRecord& record) {
  switch (record.m_nGroup) {
    case WRITER_IFD0:
    case WRITER_EXIF:
    case WRITER_GPS:
      SortDirectoryRecord(record);
      break;
    case WRITER_IPTC:
      if (const IptcDataset* row = DatasetOf(record.m_nId)) m_mapIptc[row->number] = &record;
      break;
    case WRITER_EXTENDED:
      SortExtendedRecord(record);
      break;
    default:
      break;
  }
}

VxMetadataWriter::Directory& VxMetadataWriter::DirectoryOf(std::uint32_t group) noexcept {
  if (group == WRITER_IFD0) return m_ifd0;
  return group == WRITER_EXIF ? m_exif : m_gps;
}

void VxMetadataWriter::SetField(Directory& directory, std::uint32_t tag, const FieldValue& value) {
  constexpr std::size_t kUsualFields = 16;
  if (directory.empty()) directory.reserve(kUsualFields);
  const auto place = std::ranges::lower_bound(directory, tag, {}, &Field::tag);
  if (place != directory.end() && place->tag == tag) {
    place->value = value;
  } else {
    directory.insert(place, {tag, value});
  }
}

void VxMetadataWriter::SortDirectoryRecord(const CInfoRecord& record) {
  const WriterTag* row = FindWriterTag(record.m_nGroup, record.m_nId);
  if (row == nullptr) return;
  const bool isPointer = row->type == TYPE_IFD;
  const FieldValue value =
      isPointer ? kPointer : FieldValue{row->type, {record.m_pData, record.m_nSize}};
  if (value.count != 0) SetField(DirectoryOf(record.m_nGroup), row->tag, value);
}

void VxMetadataWriter::SortExtendedRecord(const CInfoRecord& record) {
  if (record.m_nId == kSeparateId) {
    m_mapSeparate[record.m_nId] = &record;
    m_setGroups.insert(kSeparateGroups.begin(), kSeparateGroups.end());
    return;
  }
  const ExtendedRange* row = FindExtendedRange(record.m_nId);
  if (row == nullptr) return;
  m_mapExtended[record.m_nId] = &record;
  m_setGroups.insert(row->groupNumber);
}

HRESULT VxMetadataWriter::BuildBlock() {
  constexpr std::array<std::uint8_t, 4> kHeader = {'I', 'I', 42, 0};
  m_block.Clear();
  m_nExifIFDPos = 0;
  m_nGPSIFDPos = 0;
  m_isBuilt = true;
  if (m_ifd0.empty()) return S_OK;

  m_block.AppendBytes(kHeader);
  m_block.AppendU32(kIfd0Offset);
  const std::uint32_t next = AppendDirectory(m_ifd0);
  if (!m_exif.empty()) AppendChild(m_exif, m_nExifIFDPos);
  if (!m_gps.empty()) AppendChild(m_gps, m_nGPSIFDPos);
  if (!m_thumbnail.empty()) AppendThumbnail(next);
  m_isBuilt = !m_block.IsOverrun();
  return m_isBuilt ? S_OK : LMD_E_BUFFER_TOO_SMALL;
}

// Appends a directory and the values that its entries have no room for; returns the position of its
// next-directory field.
std::uint32_t VxMetadataWriter::AppendDirectory(std::span<const Field> directory) {
  std::size_t area = m_block.Position() + ValueArea(directory.size());
  m_block.AppendU16(static_cast<std::uint16_t>(directory.size()));
  for (const Field& field : directory) {
    AppendField(field, area);
    if (!field.value.IsInPlace()) area += field.value.StoredSize();
  }
  const std::uint32_t next = m_block.Position();
  m_block.AppendU32(0);
  for (const auto& [tag, value] : directory) {
    if (value.IsInPlace()) continue;
    const auto room = m_block.Append(value.StoredSize());
    if (!room.empty()) value.Store(room);
  }
  return next;
}

// `area` is where the value will stand if it has no room in the entry.
void VxMetadataWriter::AppendField(const Field& field, std::size_t area) {
  const auto& [tag, value] = field;
  if (tag == kExifPointerTag) m_nExifIFDPos = m_block.Position() + kValueOffset;
  if (tag == kGpsPointerTag) m_nGPSIFDPos = m_block.Position() + kValueOffset;
  const auto entry = m_block.Append(kEntrySize);
  if (entry.empty()) return;
  StoreU16(entry, static_cast<std::uint16_t>(tag), ByteOrder::LittleEndian);
  StoreU16(entry.subspan(2), static_cast<std::uint16_t>(value.type), ByteOrder::LittleEndian);
  StoreU32(entry.subspan(4), value.count, ByteOrder::LittleEndian);
  const auto place = entry.subspan(kValueOffset);
  if (value.IsInPlace()) {
    value.Store(place);
  } else {
    StoreU32(place, static_cast<std::uint32_t>(area), ByteOrder::LittleEndian);
  }
}

void VxMetadataWriter::AppendChild(std::span<const Field> directory, std::uint32_t pointer) {
  const std::uint32_t start = m_block.Position();
  AppendDirectory(directory);
  m_block.Link(pointer, start);
}

void VxMetadataWriter::AppendThumbnail(std::uint32_t pointer) {
  std::array<std::uint8_t, 4> position = {};
  std::array<std::uint8_t, 4> length = {};
  const std::array directory = {
      Field{0x0103, {TYPE_SHORT, kJpegCompression}},  // Compression
      Field{0x011A, {TYPE_RATIONAL, kResolution}},    // XResolution
      Field{0x011B, {TYPE_RATIONAL, kResolution}},    // YResolution
      Field{0x0128, {TYPE_SHORT, kInch}},             // ResolutionUnit
      Field{0x0201, {TYPE_LONG, position}},           // JPEGInterchangeFormat
      Field{0x0202, {TYPE_LONG, length}},             // JPEGInterchangeFormatLength
  };
  const std::uint32_t start = m_block.Position();
  const std::size_t directorySize = ValueArea(directory.size()) + 2 * kResolution.size();
  StoreU32(position, static_cast<std::uint32_t>(start + directorySize), ByteOrder::LittleEndian);
  StoreU32(length, static_cast<std::uint32_t>(m_thumbnail.size()), ByteOrder::LittleEndian);
  AppendDirectory(directory);
  m_block.AppendBytes(m_thumbnail);
  m_block.Link(pointer, start);
}

HRESULT VxMetadataWriter::WriteExifSegment() {
  constexpr std::uint32_t kLengthAndSignature = 8;
  if (m_pOutput == nullptr) return E_POINTER;
  const HRESULT built = m_isBuilt ? S_OK : BuildBlock();
  if (FAILED(built)) return built;
  const auto block = m_block.Bytes();
  if (block.empty()) return S_OK;

  std::array<std::uint8_t, 10> head = {kMarkerPrefix, kApp1Marker, 0, 0, 'E', 'x', 'i', 'f', 0, 0};
  StoreU16(std::span(head).subspan(2),
           static_cast<std::uint16_t>(block.size() + kLengthAndSignature), ByteOrder::BigEndian);
  return m_pOutput->Write(head) && m_pOutput->Write(block) ? S_OK : LMD_E_WRITE_FAILED;
}
