#ifndef LUMIDEX_SAMPLES_GENERATOR_EXIF_H_
#define LUMIDEX_SAMPLES_GENERATOR_EXIF_H_

// The EXIF blocks of the samples.

#include <cstdint>
#include <string_view>

#include "support/Tiff.h"

namespace samples {

struct Camera {
  std::string_view make = "LumidexMgr";
  std::string_view model = "Sample generator";
};

// What IFD0 of every sample begins with, in ascending order of tags up to DateTime.
test::Directory ImageTags(const test::Tiff& tiff, const Camera& camera, std::uint16_t orientation);

// The EXIF directory's entries that follow the exposure, from the version to the pixel dimensions.
struct Exposure {
  std::uint32_t timeDenominator = 250;
  std::uint32_t fNumberTenths = 56;
  std::uint16_t iso = 100;
};
test::Directory ExifTags(const test::Tiff& tiff, const Exposure& exposure, std::uint16_t width,
                         std::uint16_t height);

test::Directory GpsTags(const test::Tiff& tiff);
test::Directory InteropTags(const test::Tiff& tiff);

// A whole block with a JPEG thumbnail described by IFD1 and standing behind all directories.
test::Bytes BlockWithThumbnail(const test::Tiff& tiff, const test::Directory& ifd0,
                               const test::Bytes& thumbnail);

// A maker note as Samsung's cameras write it: one big-endian directory whose offsets count from its
// own first byte. The first entry is as large as the largest: a list of records holds no entry that
// is larger than its first one.
test::Bytes SamsungMakerNote();

}  // namespace samples

#endif  // LUMIDEX_SAMPLES_GENERATOR_EXIF_H_
