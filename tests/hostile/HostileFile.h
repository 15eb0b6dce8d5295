#ifndef LUMIDEX_TESTS_HOSTILE_HOSTILEFILE_H_
#define LUMIDEX_TESTS_HOSTILE_HOSTILEFILE_H_

// Parses of hostile files, within the bounds that hold for files of their size.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "Bounds.h"
#include "support/Bytes.h"
#include "support/Jpeg.h"
#include "support/StoreFile.h"
#include "support/TiffSuite.h"

namespace test {

using Tags = std::vector<std::uint32_t>;
using Shorts = std::vector<std::uint16_t>;

// Every category, each of which is the flag of its reader as well.
inline constexpr std::uint32_t kAllCategories = 0x0EFF;

// Tags of embedded blocks.
inline constexpr std::uint16_t kXmpTag = 700;
inline constexpr std::uint16_t kIptcTag = 33723;
inline constexpr std::uint16_t kPhotoshopTag = 34377;
inline constexpr std::uint16_t kIccTag = 34675;

// Where the TIFF block of a file begins whose first segment is the EXIF segment, and where that
// segment's payload begins.
inline constexpr std::uint32_t kExifBase = 12;
inline constexpr std::uint32_t kExifPayload = 6;

// The store of a JPEG after the segment walk. The same file goes through the driver too, with every
// category and the merge: the complete parse of a host keeps to the bound as well.
std::unique_ptr<StoreFile> BoundedJpeg(const Bytes& bytes);

// The store after a TIFF block; `result` gets what the reader answers.
std::unique_ptr<StoreFile> BoundedTiff(const Bytes& bytes, std::uint32_t tiffBase = 0,
                                       std::uint32_t segStart = 0, std::uint32_t segEnd = 0,
                                       HRESULT* result = nullptr);

// A store without a file of its own that one reader is called for.
template <class Reader>
std::unique_ptr<StoreFile> BoundedReader(const Bytes& bytes, Reader&& reader) {
  return Bounded(InputOf(bytes.size()), [&] {
    auto file = std::make_unique<StoreFile>(Bytes{});
    reader(file->Store(), bytes);
    return file;
  });
}

Bytes Repeat(const Bytes& bytes, std::size_t times);
Bytes First(const Bytes& bytes, std::size_t count);

// Entries of one SHORT each, whose value is the tag.
Directory ShortEntries(const Tiff& tiff, std::uint16_t firstTag, std::uint16_t count);

// Every entry's tag is its key, and it has all of its bytes or none. Ends the test when the
// thumbnail is not what its size says.
void ExpectSound(VxMetadata& store);

// The bytes stored in a table.
std::uint64_t StoredBytes(VxMetadata& store, std::int32_t block);

}  // namespace test

#endif  // LUMIDEX_TESTS_HOSTILE_HOSTILEFILE_H_
