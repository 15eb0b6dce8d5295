#ifndef LUMIDEX_TESTS_HOSTILE_DRIVENFILE_H_
#define LUMIDEX_TESTS_HOSTILE_DRIVENFILE_H_

// JPEG files read as a host has them read, with the merge and the records, and the XMP packets in
// them.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/OwnedRecords.h"
#include "exif/VxMetadata.h"
#include "support/Bytes.h"
#include "support/StoreFile.h"

namespace test {

// The store of a complete parse, and what a host gets of it. The file is closed again.
struct DrivenFile {
  VxMetadata store;
  OwnedRecords records;
};

// A parse within the bound for files of this size.
std::unique_ptr<DrivenFile> BoundedDrive(const Bytes& jpeg);

// Parses the files that `make` gives for `parts` and for several times as many, and fails the test
// unless the larger one costs as much for each part. `check` looks at every store.
void ExpectLinearDrive(std::size_t parts, const std::function<Bytes(std::size_t parts)>& make,
                       const std::function<void(VxMetadata& store, std::size_t parts)>& check);

// A file of one XMP segment, which a packet of up to 65,504 bytes fits.
Bytes JpegOfPacket(std::string_view packet);

// A file whose IFD0 has the packet, of any length: it runs on behind the segment.
Bytes JpegOfLongPacket(std::string_view packet);

std::string Repeat(std::string_view text, std::size_t times);

// A text of BLOCK_XMP or BLOCK_XMP_REGIONS as stored.
Stored XmpText(std::uint32_t tag, WideStringView text);

// The start of a packet, its root, with the prefixes that the tests use.
inline constexpr std::string_view kXmpRoot =
    "<rdf:RDF xmlns:xmp='http://ns.adobe.com/xap/1.0/' xmlns:exif='http://ns.adobe.com/exif/1.0/' "
    "xmlns:aux='http://ns.adobe.com/exif/1.0/aux/'>";

// Tags of BLOCK_XMP.
inline constexpr std::uint32_t kRatingTag = 0xAA01;
inline constexpr std::uint32_t kLabelTag = 0xAA03;
inline constexpr std::uint32_t kRightsTag = 0xAA04;
inline constexpr std::uint32_t kMarkerTag = 0xAB0A;

}  // namespace test

#endif  // LUMIDEX_TESTS_HOSTILE_DRIVENFILE_H_
