#ifndef LUMIDEX_WRITER_VXMETADATAWRITER_H_
#define LUMIDEX_WRITER_VXMETADATAWRITER_H_

// Builds a new EXIF segment for a JPEG file from records that a host passes (EXIF 2.32, section 4;
// TIFF 6.0, section 2). It writes these values and nothing of the file's old metadata. Records and
// thumbnail are referenced, not copied: they must stay as they are while the writer lives.

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <vector>

#include <lumidex/ImageInfo.h>

#include "base/BlockWriter.h"
#include "platform/Win32.h"
#include "writer/FieldValue.h"
#include "writer/TiffBlock.h"

class VxMetadataWriter {
 public:
  using RecordMap = std::map<std::uint32_t, const CInfoRecord*>;

  // Throws std::bad_alloc.
  explicit VxMetadataWriter(std::uint32_t option) : m_nOption(option) {}
  virtual ~VxMetadataWriter() = default;
  VxMetadataWriter(const VxMetadataWriter&) = delete;
  VxMetadataWriter& operator=(const VxMetadataWriter&) = delete;

  // Where the segment goes; the caller's.
  void SetOutput(BlockWriter* output) noexcept { m_pOutput = output; }

  // A whole JPEG stream; it is not looked into. None when the address is null or the length 0.
  void SetThumbnail(const std::uint8_t* bytes, std::uint32_t length) noexcept;

  // Sorts the records into directories. One with a tag that its group does not accept, without
  // data, or smaller than one value of its type is dropped; of two with one tag the later stays.
  // Always 0; throws std::bad_alloc.
  HRESULT SetRecords(const CInfoRecord* records, std::uint32_t count);

  // Builds the block in memory. LMD_E_BUFFER_TOO_SMALL when the directories and the thumbnail
  // together are larger than it may be.
  HRESULT BuildBlock();

  // Builds the block, unless that was done, and writes the segment; nothing, and S_OK, without any
  // directory. E_POINTER without an output; LMD_E_BUFFER_TOO_SMALL, with nothing written;
  // LMD_E_WRITE_FAILED.
  HRESULT WriteExifSegment();

  std::uint32_t Option() const noexcept { return m_nOption; }

  // What the block holds after BuildBlock().
  std::span<const std::uint8_t> Block() const noexcept { return m_block.Bytes(); }

  // By design the records of the groups 16 and 64 are sorted and written nowhere: by the number of
  // their IPTC dataset (IIM 4.2, chapter 6), by their identifier, those with 0xAB09 apart; and the
  // numbers of the groups that the latter two belong to.
  const RecordMap& IptcRecords() const noexcept { return m_mapIptc; }
  const RecordMap& ExtendedRecords() const noexcept { return m_mapExtended; }
  const RecordMap& SeparateRecords() const noexcept { return m_mapSeparate; }
  const std::set<std::uint32_t>& ExtendedGroups() const noexcept { return m_setGroups; }

 private:
  // A directory's values in the order in which they are written, ascending by tag.
  struct Field {
    std::uint32_t tag;
    FieldValue value;
  };
  using Directory = std::vector<Field>;

  static void SetField(Directory& directory, std::uint32_t tag, const FieldValue& value);
  Directory& DirectoryOf(std::uint32_t group) noexcept;
  void SortRecord(const CInfoRecord& record);
  void SortDirectoryRecord(const CInfoRecord& record);
  void SortExtendedRecord(const CInfoRecord& record);

  std::uint32_t AppendDirectory(std::span<const Field> directory);
  void AppendField(const Field& field, std::size_t area);
  void AppendChild(std::span<const Field> directory, std::uint32_t pointer);
  void AppendThumbnail(std::uint32_t pointer);

  std::uint32_t m_nOption;
  BlockWriter* m_pOutput = nullptr;
  std::uint32_t m_nExifIFDPos = 0;  // of the pointer's value in the block; 0 while unknown
  std::uint32_t m_nGPSIFDPos = 0;
  std::span<const std::uint8_t> m_thumbnail;
  TiffBlock m_block;
  bool m_isBuilt = false;  // from the records and the thumbnail as they are
  Directory m_ifd0;
  Directory m_exif;
  Directory m_gps;
  RecordMap m_mapIptc;
  RecordMap m_mapExtended;
  RecordMap m_mapSeparate;
  std::set<std::uint32_t> m_setGroups;
};

#endif  // LUMIDEX_WRITER_VXMETADATAWRITER_H_
