#ifndef LUMIDEX_TOOL_VALUES_WORDS_H_
#define LUMIDEX_TOOL_VALUES_WORDS_H_

// The codes of enumerated values and what they mean: EXIF 2.32, TIFF 6.0, ICC.1.

#include <array>
#include <cstdint>

#include "Tables.h"

namespace tool {

struct Word {
  std::uint32_t id;
  const char* word;
};

template <std::size_t count>
using Words = std::array<Word, count>;

// clang-format off
inline constexpr Words<8> kOrientations = {{
    {1, "upright"},
    {2, "mirrored"},
    {3, "upside down"},
    {4, "mirrored and upside down"},
    {5, "to be mirrored and turned 90° left"},
    {6, "to be turned 90° right"},
    {7, "to be mirrored and turned 90° right"},
    {8, "to be turned 90° left"},
}};

inline constexpr Words<3> kLengthUnits = {{
    {1, "none"},
    {2, "inch"},
    {3, "centimetre"},
}};

inline constexpr Words<13> kCompressions = {{
    {1,     "uncompressed"},
    {2,     "CCITT Huffman"},
    {3,     "CCITT group 3"},
    {4,     "CCITT group 4"},
    {5,     "LZW"},
    {6,     "JPEG"},
    {7,     "JPEG (technical note 2)"},
    {8,     "Deflate"},
    {9,     "JBIG, black and white"},
    {10,    "JBIG, colour"},
    {32773, "PackBits"},
    {34712, "JPEG 2000"},
    {34892, "lossy JPEG"},
}};

inline constexpr Words<10> kPhotometrics = {{
    {0,     "white is zero"},
    {1,     "black is zero"},
    {2,     "RGB"},
    {3,     "palette"},
    {4,     "transparency mask"},
    {5,     "CMYK"},
    {6,     "YCbCr"},
    {8,     "CIE L*a*b*"},
    {32803, "colour filter array"},
    {34892, "linear raw"},
}};

inline constexpr Words<2> kPlanarConfigurations = {{
    {1, "chunky"},
    {2, "planar"},
}};

inline constexpr Words<2> kYCbCrPositions = {{
    {1, "centred"},
    {2, "co-sited"},
}};

inline constexpr Words<10> kExposurePrograms = {{
    {0, "not defined"},
    {1, "manual"},
    {2, "normal program"},
    {3, "aperture priority"},
    {4, "shutter priority"},
    {5, "creative program (depth of field)"},
    {6, "action program (fast shutter)"},
    {7, "portrait"},
    {8, "landscape"},
    {9, "bulb"},
}};

inline constexpr Words<8> kSensitivityTypes = {{
    {0, "unknown"},
    {1, "standard output sensitivity"},
    {2, "recommended exposure index"},
    {3, "ISO speed"},
    {4, "standard output sensitivity and recommended exposure index"},
    {5, "standard output sensitivity and ISO speed"},
    {6, "recommended exposure index and ISO speed"},
    {7, "standard output sensitivity, recommended exposure index and ISO speed"},
}};

inline constexpr Words<8> kMeteringModes = {{
    {0,   "unknown"},
    {1,   "average"},
    {2,   "centre-weighted average"},
    {3,   "spot"},
    {4,   "multi-spot"},
    {5,   "pattern"},
    {6,   "partial"},
    {255, "other"},
}};

inline constexpr Words<22> kLightSources = {{
    {0,   "unknown"},
    {1,   "daylight"},
    {2,   "fluorescent"},
    {3,   "tungsten"},
    {4,   "flash"},
    {9,   "fine weather"},
    {10,  "cloudy weather"},
    {11,  "shade"},
    {12,  "daylight fluorescent"},
    {13,  "day white fluorescent"},
    {14,  "cool white fluorescent"},
    {15,  "white fluorescent"},
    {16,  "warm white fluorescent"},
    {17,  "standard light A"},
    {18,  "standard light B"},
    {19,  "standard light C"},
    {20,  "D55"},
    {21,  "D65"},
    {22,  "D75"},
    {23,  "D50"},
    {24,  "ISO studio tungsten"},
    {255, "other"},
}};

inline constexpr Words<4> kColorSpaces = {{
    {1,      "sRGB"},
    {2,      "Adobe RGB"},
    {0xFFFD, "wide gamut RGB"},
    {0xFFFF, "uncalibrated"},
}};

// The module's own code for the colour space of an image.
inline constexpr Words<3> kColorSpaceCodes = {{
    {0, "unknown"},
    {1, "sRGB"},
    {3, "Adobe RGB"},
}};

inline constexpr Words<7> kSensingMethods = {{
    {1, "not defined"},
    {2, "one-chip colour area sensor"},
    {3, "two-chip colour area sensor"},
    {4, "three-chip colour area sensor"},
    {5, "colour sequential area sensor"},
    {7, "trilinear sensor"},
    {8, "colour sequential linear sensor"},
}};

inline constexpr Words<4> kFileSources = {{
    {0, "other"},
    {1, "transparent scanner"},
    {2, "reflex scanner"},
    {3, "digital still camera"},
}};

inline constexpr Words<1> kSceneTypes = {{
    {1, "directly photographed"},
}};

inline constexpr Words<2> kCustomRendered = {{
    {0, "normal process"},
    {1, "custom process"},
}};

inline constexpr Words<3> kExposureModes = {{
    {0, "auto"},
    {1, "manual"},
    {2, "auto bracket"},
}};

inline constexpr Words<2> kWhiteBalances = {{
    {0, "auto"},
    {1, "manual"},
}};

inline constexpr Words<4> kSceneCaptureTypes = {{
    {0, "standard"},
    {1, "landscape"},
    {2, "portrait"},
    {3, "night scene"},
}};

inline constexpr Words<5> kGainControls = {{
    {0, "none"},
    {1, "low gain up"},
    {2, "high gain up"},
    {3, "low gain down"},
    {4, "high gain down"},
}};

inline constexpr Words<3> kSoftToHard = {{
    {0, "normal"},
    {1, "soft"},
    {2, "hard"},
}};

inline constexpr Words<3> kLowToHigh = {{
    {0, "normal"},
    {1, "low"},
    {2, "high"},
}};

inline constexpr Words<4> kSubjectDistanceRanges = {{
    {0, "unknown"},
    {1, "macro"},
    {2, "close view"},
    {3, "distant view"},
}};

inline constexpr Words<4> kCompositeImages = {{
    {0, "unknown"},
    {1, "no"},
    {2, "yes, in general"},
    {3, "yes, captured while shooting"},
}};

inline constexpr Words<2> kGpsAltitudeRefs = {{
    {0, "above sea level"},
    {1, "below sea level"},
}};

inline constexpr Words<2> kGpsDifferentials = {{
    {0, "without correction"},
    {1, "corrected"},
}};

inline constexpr Words<4> kRenderingIntents = {{
    {0, "perceptual"},
    {1, "media-relative colorimetric"},
    {2, "saturation"},
    {3, "ICC-absolute colorimetric"},
}};

// The vendor codes of the maker-note summary.
inline constexpr Words<1> kMakerNoteVendors = {{
    {10, "Samsung"},
}};
// clang-format on

static_assert(IsAscending(kOrientations) && IsAscending(kLengthUnits));
static_assert(IsAscending(kCompressions) && IsAscending(kPhotometrics));
static_assert(IsAscending(kExposurePrograms) && IsAscending(kSensitivityTypes));
static_assert(IsAscending(kMeteringModes) && IsAscending(kLightSources));
static_assert(IsAscending(kColorSpaces) && IsAscending(kSensingMethods));

}  // namespace tool

#endif  // LUMIDEX_TOOL_VALUES_WORDS_H_
