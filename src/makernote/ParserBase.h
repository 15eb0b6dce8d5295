#ifndef LUMIDEX_MAKERNOTE_PARSERBASE_H_
#define LUMIDEX_MAKERNOTE_PARSERBASE_H_

// The base of all vendor parsers: it reads one directory of 12-byte entries (TIFF 6.0, section 2)
// into entries of its own. A vendor class says how the maker note begins, from where its offsets
// count, and which entries make up the summary.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/ByteOrder.h"
#include "base/FileStream.h"
#include "base/TagMap.h"
#include "makernote/MakerNoteInfo.h"

class CParserBase {
 public:
  CParserBase() = default;
  virtual ~CParserBase() = default;
  CParserBase(const CParserBase&) = delete;
  CParserBase& operator=(const CParserBase&) = delete;

  // What the camera is and where its TIFF header stands; to be told before each parse.
  void SetContext(std::string make, std::string model, std::uint32_t baseOffset,
                  std::string software, std::uint16_t focalLength);

  // Reads the maker note at the stream's position. Values that do not lie in the file are accepted
  // strictly between the two bounds, or anywhere when one is 0. False when the stream is not open,
  // or the header or the directory is unusable.
  virtual bool Parse(FileStream& stream, ByteOrder order, std::uint32_t lower, std::uint32_t upper);

  // Fills the summary from the entries of the last parse.
  virtual bool GetInfo(MakerNoteInfo& info);

  // A walk over the entries, ascending by tag. CurrentEntry() is null at the end, which NextEntry()
  // tells by false.
  virtual bool FirstEntry();
  virtual bool NextEntry();
  virtual const TagEntry* CurrentEntry();

 protected:
  // Reads the directory at the stream's position. In the base its offsets count from the TIFF
  // header.
  virtual bool ParseIFD(FileStream& stream, std::uint32_t lower, std::uint32_t upper);

  // Reads what stands before the directory, and sets byte order and vendor code.
  virtual bool ReadHeader(FileStream& stream) = 0;

  virtual bool FillInfo(MakerNoteInfo& info) = 0;

  // Called for each accepted entry with the stream at its value, and after the last one.
  virtual bool OnEntry(FileStream& stream, std::uint32_t tag, std::uint32_t type);
  virtual bool OnFinish(FileStream& stream);

  // An entry's type and bytes, apart from the table.
  struct EntryCopy {
    std::uint32_t m_nTag = 0;
    std::uint32_t m_nType = 0;
    std::vector<std::uint8_t> bytes;
  };

  // Copies an entry out. False, with `out` untouched, when the tag is absent or has no bytes.
  bool GetEntry(std::uint32_t tag, EntryCopy& out) const;

  // The directory reading of every vendor: `offsetBase` is the file position from which a value's
  // offset counts. False when there are no entries or more than kMaxEntries.
  bool ReadDirectory(FileStream& stream, std::uint32_t offsetBase, std::uint32_t lower,
                     std::uint32_t upper);

  static constexpr std::uint16_t kMaxEntries = 256;

  std::uint32_t m_nBaseOffset = 0;
  ByteOrder m_byteOrder = ByteOrder::LittleEndian;
  std::uint16_t m_nFocalLength = 0;
  std::uint32_t m_nVendorCode = 0;
  std::uint32_t m_nParseState = 0;             // for the vendor class; cleared by each parse
  std::uint32_t m_nStartPosition = 0;          // where the last parse began
  std::array<std::uint8_t, 256> m_workArea{};  // for the vendor class
  std::string m_strMake;
  std::string m_strModel;
  std::string m_strSoftware;

 private:
  void ReadEntry(FileStream& stream, std::uint32_t offsetBase, std::uint32_t lower,
                 std::uint32_t upper);
  bool SeekToValue(FileStream& stream, std::uint64_t size, std::uint32_t offsetBase,
                   std::uint32_t lower, std::uint32_t upper) const;

  NodePool m_nodes;
  TagMap m_entries{m_nodes};
  TagMap::Iterator m_current = m_entries.end();
};

#endif  // LUMIDEX_MAKERNOTE_PARSERBASE_H_
