#ifndef LUMIDEX_MAKERNOTE_VXMAKERNOTEPARSER_H_
#define LUMIDEX_MAKERNOTE_VXMAKERNOTEPARSER_H_

// The front end of the maker-note parsers: told the camera's make, it picks the vendor's parser,
// runs it over the maker note and hands out the summary and the entries. It owns the vendor parser,
// whose entries stay until the next choice.

#include <cstdint>
#include <memory>
#include <string>

#include "base/ByteOrder.h"
#include "base/FileStream.h"
#include "base/TagEntry.h"
#include "makernote/MakerNoteInfo.h"
#include "makernote/ParserBase.h"
#include "platform/Win32.h"

class CVxMakerNoteParser {
 public:
  // The owner's value means nothing to maker notes.
  explicit CVxMakerNoteParser(std::uint32_t ownerValue);
  CVxMakerNoteParser(const CVxMakerNoteParser&) = delete;
  CVxMakerNoteParser& operator=(const CVxMakerNoteParser&) = delete;

  // Chooses a new vendor parser; the one before is gone. False when none serves the make.
  virtual bool SetCameraInfo(std::string make, std::string model);

  // Further facts for the parses that follow.
  virtual void SetExtraInfo(std::string software, std::uint16_t focalLength);

  // Releases a summary; null is ignored.
  virtual void FreeMakerNoteInfo(std::unique_ptr<MakerNoteInfo> info);

  // Parses the maker note at the stream's position. `baseOffset` is where the TIFF header stands,
  // from which EXIF offsets count; the bounds are as in CParserBase::Parse. Null without a vendor
  // parser, which is logged, and for a maker note that cannot be read.
  virtual std::unique_ptr<MakerNoteInfo> ParseMakerNote(FileStream& stream,
                                                        std::uint32_t baseOffset, ByteOrder order,
                                                        std::uint32_t lower, std::uint32_t upper);

  // The same at a position of a file that it opens itself, without bounds. Null, and logged, also
  // for an empty path and a file that cannot be opened.
  virtual std::unique_ptr<MakerNoteInfo> ParseMakerNote(const WCHAR* path, std::uint32_t position,
                                                        std::uint32_t baseOffset, ByteOrder order);

  // The walk over the vendor parser's entries; without one there are none.
  virtual bool FirstEntry();
  virtual bool NextEntry();
  virtual const TagEntry* CurrentEntry();

  virtual ~CVxMakerNoteParser();

 private:
  bool HasParser() const;
  bool Parse(FileStream& stream, std::uint32_t baseOffset, ByteOrder order, std::uint32_t lower,
             std::uint32_t upper);
  std::unique_ptr<MakerNoteInfo> BuildInfo();

  std::unique_ptr<CParserBase> m_pParser;
  std::string m_strMake;
  std::string m_strModel;
  std::string m_strSoftware;
  std::uint16_t m_nFocalLength = 0;
};

#endif  // LUMIDEX_MAKERNOTE_VXMAKERNOTEPARSER_H_
