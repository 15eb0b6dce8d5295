#ifndef LUMIDEX_WRITER_WRITERTAGS_H_
#define LUMIDEX_WRITER_WRITERTAGS_H_

// What the writer accepts: the tags of each directory with the type that is written, and the
// identifiers of the two groups that it only sorts. A record's own type says nothing here.

#include <cstdint>
#include <span>

#include "base/TypeSizes.h"

// The groups of the records that the writer takes.
enum WriterGroup : std::uint32_t {
  WRITER_IFD0 = 0x002,
  WRITER_EXIF = 0x004,
  WRITER_GPS = 0x008,
  WRITER_IPTC = 0x010,
  WRITER_EXTENDED = 0x040,
};

inline constexpr std::uint32_t kExifPointerTag = 0x8769;
inline constexpr std::uint32_t kGpsPointerTag = 0x8825;

// A tag and the type of its value; TYPE_IFD is a pointer to a directory, written as one LONG.
struct WriterTag {
  std::uint16_t tag;
  TagType type;
};

// The accepted tags of a directory's group, ascending; none for any other group.
std::span<const WriterTag> WriterTagsOf(std::uint32_t group) noexcept;

// The row of a record's tag, or null when the writer drops it.
const WriterTag* FindWriterTag(std::uint32_t group, std::uint32_t tag) noexcept;

// Identifiers of the extended group and the number of the group they belong to.
struct ExtendedRange {
  std::uint32_t first;
  std::uint32_t last;
  std::uint32_t groupNumber;
};

// The row of an identifier, or null when the writer drops it.
const ExtendedRange* FindExtendedRange(std::uint32_t id) noexcept;

#endif  // LUMIDEX_WRITER_WRITERTAGS_H_
