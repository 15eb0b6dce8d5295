#ifndef LUMIDEX_EXIF_VXMETADATA_H_
#define LUMIDEX_EXIF_VXMETADATA_H_

// The metadata store of one parse: every reader writes what it found here, in host byte order, and
// the merge and the driver read it back. It owns the open file, the thumbnail, the maker-note front
// end, the XMP parser and all tables. One thread at a time.

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "base/ByteOrder.h"
#include "base/FileStream.h"
#include "base/ParseBudget.h"
#include "base/TagEntry.h"
#include "base/TagMap.h"
#include "makernote/VxMakerNoteParser.h"
#include "platform/Win32.h"
#include "xmp/VxXMPParser.h"

// The store's tables. kSubIfdBlock | i names the table of the i-th SubIFD of IFD0.
enum BlockNumber : std::int32_t {
  BLOCK_IFD0 = 1,
  BLOCK_EXIF = 2,  // the EXIF directory and the interoperability directory
  BLOCK_GPS = 3,
  BLOCK_IFD1 = 4,  // the thumbnail's directory
  BLOCK_IPTC = 5,
  BLOCK_MAKERNOTE_SUMMARY = 6,
  BLOCK_MAKERNOTE = 7,
  BLOCK_ICC = 8,
  BLOCK_XMP = 9,
  BLOCK_XMP_REGIONS = 10,
};
inline constexpr std::int32_t kBlockCount = 10;
inline constexpr std::int32_t kSubIfdBlock = 0x1000;

// What to read. A reader whose bit is clear reads nothing and reports success.
enum ParseFlag : std::uint32_t {
  PARSE_EXIF = 0x0004,
  PARSE_GPS = 0x0008,
  PARSE_IPTC = 0x0010,
  PARSE_XMP = 0x0040,
  PARSE_MAKERNOTE_SUMMARY = 0x0080,  // either maker-note bit reads the whole maker note
  PARSE_MAKERNOTE = 0x0400,
  PARSE_ICC = 0x0800,
  PARSE_NO_MERGE = 0x80000000,
};

enum ThumbnailFormat : std::uint32_t {
  THUMBNAIL_JPEG = 1,
  THUMBNAIL_RGB = 2,  // uncompressed strips
};

// Where a TIFF structure lies in the file, and how its numbers are stored. All positions are file
// positions; their sums wrap at 32 bits.
struct TiffFrame {
  std::uint32_t tiffBase = 0;  // of the byte-order mark, from which every offset counts
  ByteOrder order = ByteOrder::LittleEndian;
  std::uint32_t segStart = 0;  // of the segment's payload
  std::uint32_t segEnd = 0;    // just past the segment

  // Whether a position may be followed: strictly inside the segment, or anywhere when a bound is 0.
  bool Allows(std::uint32_t position) const noexcept {
    const bool isBounded = segStart != 0 && segEnd != 0;
    const bool isInside = (segStart < position) & (position < segEnd);  // no branch for either
    return !isBounded | isInside;
  }
};

// One directory entry, read up to its value field (TIFF 6.0, section 2).
struct DirectoryEntry {
  std::uint16_t tag = 0;
  std::uint16_t type = 0;
  std::uint32_t count = 0;
  std::uint32_t valuePosition = 0;  // file position of the value, its offset followed
};

class VxMetadata {
 private:
  NodePool m_nodes;  // of all tables and their values, which go before it

 public:
  VxMetadata() = default;
  virtual ~VxMetadata() = default;
  VxMetadata(const VxMetadata&) = delete;
  VxMetadata& operator=(const VxMetadata&) = delete;

  // --- Tables (VxMetadata.cpp) ---

  // The table of a block; null for an unknown block or a SubIFD that was not listed.
  TagMap* m_fnGetBlock(std::int32_t block) {
    if (block < BLOCK_IFD0 || block > kBlockCount) return FindSubIfd(block);
    return &m_blocks[block - 1].entries;
  }

  // The table of a SubIFD; made when absent.
  TagMap& FindOrAddSubIfd(std::int32_t block) {
    return m_mapSubIfd.try_emplace(block, m_nodes).first->second;
  }

  // The enumeration cursor of a fixed table, else null.
  TagMap::Iterator* m_fnGetBlockCursor(std::int32_t block);

  // The entry to write a tag's value to; inserted when absent.
  TagEntry& m_fnFindOrInsert(TagMap& table, std::uint32_t key) { return table.FindOrInsert(key); }

  // Copies an entry out. With out->m_pData null only the size is asked for; otherwise out->m_nSize
  // is the buffer's capacity. E_POINTER for a null `out` or an unknown block; S_FALSE for an absent
  // tag or a buffer that is too small.
  HRESULT m_fnGetTagEntry(std::int32_t block, std::uint32_t tag, TagEntry* out);

  // Copies a value's bytes. A capacity above the value's size gets the whole value and the size,
  // and no terminator; otherwise the buffer is filled and its last byte is 0. E_POINTER for a null
  // argument; E_FAIL for an unknown block, an absent tag or an empty value.
  HRESULT m_fnGetTagData(std::int32_t block, std::uint32_t tag, std::uint8_t* buffer,
                         std::int32_t* size);

  // A value's text up to its first zero. E_FAIL, with `out` untouched, for an absent tag, an empty
  // value or one without a zero; E_OUTOFMEMORY.
  HRESULT m_fnGetTagString(std::int32_t block, std::uint32_t tag, std::string& out);

  // The first 16 bits of a value, sign-extended: 65535 reads as 0xFFFFFFFF. E_FAIL for an absent
  // tag or an empty value.
  HRESULT m_fnGetTagShort(std::int32_t block, std::uint32_t tag, std::uint32_t* out);

  // The first value of an IFD1 tag, by its stored type. Another type than the six integer types and
  // a count of 0 give 0x7FFFFFFF and E_FAIL; an absent tag E_FAIL.
  HRESULT m_fnGetThumbTagInteger(std::uint32_t tag, std::uint32_t* out);

  // The first 32 bits of an IFD1 tag, whatever its type. E_FAIL for an absent tag or an empty
  // value.
  HRESULT m_fnGetThumbTagLong(std::uint32_t tag, std::uint32_t* out);

  // Clears the tables, the thumbnail and m_nTiffMagic. The file, the path, the image size and
  // m_nEmbeddedJpegPos stay.
  void m_fnReset();

  // What this parse may still cost; shared with the open file.
  ParseBudget& Budget() noexcept { return m_pFile ? m_pFile->Budget() : m_budget; }

  // For the values of this store's entries.
  NodePool& ValuePool() noexcept { return m_nodes; }
  ValueMemory Memory() noexcept { return {m_nodes, Budget()}; }

  // --- JPEG (JpegSegments.cpp, PhotoshopResources.cpp, IccProfile.cpp) ---

  // Walks the marker segments of the open file. E_POINTER without one; else S_OK, also for a file
  // that is no JPEG.
  HRESULT m_fnParseAppSegments();

  // Walks Photoshop image resources. E_FAIL for fewer than 10 bytes.
  HRESULT m_fnParsePhotoshopIRB(std::span<const std::uint8_t> bytes);

  // Takes the thumbnail of resource 0x040C, unless there is one already.
  HRESULT m_fnParsePhotoshopThumbnail(std::span<const std::uint8_t> bytes);

  // Reads an ICC profile into BLOCK_ICC (ICC.1, section 7). E_UNEXPECTED when memory runs out.
  HRESULT m_fnParseICCProfile(std::span<const std::uint8_t> bytes);

  // --- TIFF (TiffDirectories.cpp, DirectoryWalk.cpp, Thumbnail.cpp, LeafRecords.cpp) ---

  // Header, IFD0 and everything reachable from it. E_FAIL without a byte-order mark.
  HRESULT m_fnParseTiffHeader(std::uint32_t tiffBase, std::uint32_t segStart, std::uint32_t segEnd);

  // With the stream at an entry's value field: leaves it at the value and says whether the value
  // may be read.
  static bool m_fnCheckEntry(FileStream& stream, std::uint16_t type, std::uint32_t count,
                             const TiffFrame& frame);

  // Each with the stream at the directory's entry count. E_FAIL for more than 512 entries.
  HRESULT m_fnParseIFD0(const TiffFrame& frame);
  HRESULT m_fnParseExifIFD(const TiffFrame& frame);
  HRESULT m_fnParseGpsIFD(const TiffFrame& frame);
  HRESULT m_fnParseInteropIFD(const TiffFrame& frame);
  HRESULT m_fnParseIFD1(const TiffFrame& frame);
  HRESULT m_fnParseSubIFD(const TiffFrame& frame, TagMap& table);

  // Reads the Leaf records at a position for the name of the camera back.
  void m_fnParseLeafData(std::uint32_t position, ByteOrder order);

  // Replaces the thumbnail by a copy of a JPEG stream; without memory there is none.
  void SetThumbnail(std::span<const std::uint8_t> bytes);

  // Takes the pixel size of a JPEG thumbnail from its frame header.
  void m_fnScanThumbnailSize();

  // --- Maker note (MakerNoteEntries.cpp) ---

  // With the stream at the maker note; `base` is the position from which its offsets count.
  HRESULT m_fnParseMakerNote(std::uint32_t base, ByteOrder order, std::uint32_t segEnd);
  void m_fnStoreMakerNoteSummary(const MakerNoteInfo& info);

  // --- IPTC and XMP (IptcRecords.cpp, xmp/XmpProperties.cpp) ---

  // Reads IPTC-IIM datasets into BLOCK_IPTC (IIM 4.2, section 1.5). E_FAIL when one runs past the
  // end.
  HRESULT m_fnParseIPTC(std::span<const std::uint8_t> bytes);

  // Reads an XMP packet into BLOCK_XMP and BLOCK_XMP_REGIONS. E_POINTER without a parser.
  HRESULT ParseXmp(const std::uint8_t* packet, std::uint32_t length);

  // --- Merge (merge/MergeMetadata.cpp) ---

  // Fills missing exposure and lens values from the other sources, unless PARSE_NO_MERGE is set.
  // Always 0.
  HRESULT MergeMetadata();

  std::uint32_t m_nOwnerValue = 0;
  std::uint32_t m_nParseFlags = 0;
  std::optional<FileStream> m_pFile;  // a part of the store, as the parsers: no memory of its own
  std::uint32_t m_nFileType = 0;
  std::uint32_t m_nImageWidth = 0;
  std::uint32_t m_nImageHeight = 0;
  bool m_bReadsIfd1 = true;       // else it is passed over: no record is made of it
  bool m_bKeepsThumbnail = true;  // else none is read: no record holds it
  std::unique_ptr<std::uint8_t[]> m_pThumbnail;
  std::uint32_t m_nThumbnailSize = 0;
  std::uint32_t m_nThumbnailWidth = 0;
  std::uint32_t m_nThumbnailHeight = 0;
  std::uint32_t m_nThumbnailFormat = THUMBNAIL_JPEG;
  std::uint32_t m_nTiffMagic = 0;
  std::uint32_t m_nEmbeddedJpegPos = 0;
  std::optional<CVxMakerNoteParser> m_pMakerNote{m_nOwnerValue};
  std::optional<VxXMPParser> m_pXmpParser{m_nOwnerValue};
  WideStringView m_strPath;  // the caller's, for as long as the parse

  // The SubIFD tables by block number.
  std::map<std::int32_t, TagMap> m_mapSubIfd;

 private:
  struct FixedTable {
    explicit FixedTable(NodePool& nodes) noexcept : entries(nodes) {}

    TagMap entries;
    TagMap::Iterator cursor;
  };

  TagMap* FindSubIfd(std::int32_t block);
  const TagEntry* FindEntry(std::int32_t block, std::uint32_t tag);

  FixedTable m_blocks[kBlockCount] = {FixedTable(m_nodes), FixedTable(m_nodes), FixedTable(m_nodes),
                                      FixedTable(m_nodes), FixedTable(m_nodes), FixedTable(m_nodes),
                                      FixedTable(m_nodes), FixedTable(m_nodes), FixedTable(m_nodes),
                                      FixedTable(m_nodes)};
  ParseBudget m_budget;
};

#endif  // LUMIDEX_EXIF_VXMETADATA_H_
