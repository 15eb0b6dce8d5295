#ifndef LUMIDEX_RESULTCODES_H_
#define LUMIDEX_RESULTCODES_H_

#include "ComTypes.h"

// The module's own result codes: failure codes of the interface facility. LMD_RESULT_CODES(X) calls
// X(name, value, meaning) once for each, so that a host can build a table of names from it.
// clang-format off
#define LMD_RESULT_CODES(X)                                                                       \
  X(LMD_E_SRC_NOT_FOUND,    0x8004C001U, "the file does not exist or is not a regular file")      \
  X(LMD_E_DST_EXISTS,       0x8004C002U, "the output exists and may not be overwritten")          \
  X(LMD_E_OPEN_FAILED,      0x8004C003U, "the file could not be opened")                          \
  X(LMD_E_READ_FAILED,      0x8004C004U, "a read returned fewer bytes than asked")                \
  X(LMD_E_WRITE_FAILED,     0x8004C005U, "a write wrote fewer bytes than asked")                  \
  X(LMD_E_BUFFER_TOO_SMALL, 0x8004C011U, "the buffer is too small for the value")                 \
  X(LMD_E_INVALID_ARG,      0x8004C012U, "a null argument, or no parse result to read from")      \
  X(LMD_E_OUT_OF_MEMORY,    0x8004C013U, "an allocation failed inside a parse")                   \
  X(LMD_E_XMP_FOUND,        0x8004C021U, "an XMP packet is already present")                      \
  X(LMD_E_BAD_FORMAT,       0x8004C022U, "the file type is not supported here")                   \
  X(LMD_E_TYPE_MISMATCH_16, 0x8004C023U, "record 16 has an unexpected value type")                \
  X(LMD_E_TYPE_MISMATCH_17, 0x8004C024U, "record 17 has an unexpected value type")                \
  X(LMD_E_NOT_FOUND,        0x8004C025U, "the value is not present")                              \
  X(LMD_E_NOT_PANORAMA,     0x8004C026U, "XMP is present but carries no projection type")         \
  X(LMD_E_TYPE_MISMATCH_18, 0x8004C027U, "record 18 has an unexpected value type")                \
  X(LMD_E_TYPE_MISMATCH_19, 0x8004C028U, "record 19 has an unexpected value type")                \
  X(LMD_E_HAS_EXIF,         0x8004C029U, "an EXIF segment is already present")                    \
  X(LMD_E_TYPE_MISMATCH_21, 0x8004C031U, "record 21 has an unexpected value type")                \
  X(LMD_E_ALREADY_MARKED,   0x8004C032U, "the file already ends with the trailer block")          \
  X(LMD_E_TYPE_MISMATCH_20, 0x8004C033U, "record 20 has an unexpected value type")
// clang-format on

LMD_RESULT_CODES(LMD_DECLARE_CODE)

#endif  // LUMIDEX_RESULTCODES_H_
