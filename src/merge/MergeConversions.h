#ifndef LUMIDEX_MERGE_MERGECONVERSIONS_H_
#define LUMIDEX_MERGE_MERGECONVERSIONS_H_

// What the steps of the merge make of their sources. Each function sets the target, or nothing when
// the source has no usable value.

#include "merge/MergeSteps.h"

void CopyValue(const MergeSource& source, MergeTarget& target);

// ISO speed. EXIF keeps it in 16 bits, so that a larger one is capped there and stands in full in
// the recommended exposure index; CopyLargeIso has the ISO speed for its companion.
void CapIso(const MergeSource& source, MergeTarget& target);
void CopyLargeIso(const MergeSource& source, MergeTarget& target);
void CopyIsoAsShort(const MergeSource& source, MergeTarget& target);
void DivideRational(const MergeSource& source, MergeTarget& target);
void ReadIsoText(const MergeSource& source, MergeTarget& target);

// Exposure.
void ConvertShutter(const MergeSource& source, MergeTarget& target);
void ConvertShutterText(const MergeSource& source, MergeTarget& target);
void ConvertApertureText(const MergeSource& source, MergeTarget& target);
void ReadRational(const MergeSource& source, MergeTarget& target);
void ReadSignedRational(const MergeSource& source, MergeTarget& target);

// Lens.
void ReadText(const MergeSource& source, MergeTarget& target);
void DescribeLens(const MergeSource& source, MergeTarget& target);
void SplitFocalLengths(const MergeSource& source, MergeTarget& target);
void SplitFNumbers(const MergeSource& source, MergeTarget& target);

// Sensor. The companions are the focal length on 35 mm film and the image's width.
void ComputeFocalFactor(const MergeSource& source, MergeTarget& target);
void ComputeResolutionFactor(const MergeSource& source, MergeTarget& target);

#endif  // LUMIDEX_MERGE_MERGECONVERSIONS_H_
