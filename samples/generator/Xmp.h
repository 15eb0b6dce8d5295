#ifndef LUMIDEX_SAMPLES_GENERATOR_XMP_H_
#define LUMIDEX_SAMPLES_GENERATOR_XMP_H_

// The XMP packets of the samples.

#include <string>

namespace samples {

// The pose of a whole sphere, in a picture twice as wide as high. Its projection type is the first
// property that a store keeps, and the longest: a list of records holds no entry that is larger
// than its first one.
std::string PanoramaPacket(int width);

// The same with a rating, which then comes first and is shorter than all that follows.
std::string RatedPanoramaPacket(int width);

// The two heads of DrawPeople.
std::string PeoplePacket();

// Exposure and lens of a photograph.
std::string ExposurePacket();

}  // namespace samples

#endif  // LUMIDEX_SAMPLES_GENERATOR_XMP_H_
