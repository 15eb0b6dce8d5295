#include "RichPhoto.h"

#include "support/SamsungPhoto.h"
#include "support/XmpPacket.h"

namespace fuzz {

test::Bytes RichPhoto() {
  using test::kNote;
  const test::Directory note = {test::kNoteBound,
                                kNote.Long(16, {7}),
                                test::NoteSRational(17, {{1, 2}, {-3, 4}, {5, 6}}),
                                test::NoteSLong(18, {1, -2}),
                                kNote.Undefined(19, {1, 2, 3, 4, 5}),
                                test::NoteSLong(20, {7, -8, 9}),
                                kNote.Undefined(21, {10, 11, 12})};
  return test::Jpeg()
      .Exif(test::SamsungTiff(note))
      .Xmp(test::XmpPacket("GPano:ProjectionType=\"equirectangular\" "
                           "GPano:PoseHeadingDegrees=\"12.5\" GPano:PosePitchDegrees=\"-1.25e1\" "
                           "GPano:PoseRollDegrees=\" +.5\""))
      .Frame(640, 480)
      .Scan()
      .Build();
}

}  // namespace fuzz
