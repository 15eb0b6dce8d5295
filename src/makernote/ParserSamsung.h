#ifndef LUMIDEX_MAKERNOTE_PARSERSAMSUNG_H_
#define LUMIDEX_MAKERNOTE_PARSERSAMSUNG_H_

// The Samsung maker note: a bare directory that begins with the note's first byte. It is read
// big-endian, and its offsets count from the note itself.

#include <cstdint>

#include "makernote/ParserBase.h"

class CParserSamsung : public CParserBase {
 protected:
  bool ParseIFD(FileStream& stream, std::uint32_t lower, std::uint32_t upper) override;
  bool ReadHeader(FileStream& stream) override;
  bool FillInfo(MakerNoteInfo& info) override;
};

#endif  // LUMIDEX_MAKERNOTE_PARSERSAMSUNG_H_
