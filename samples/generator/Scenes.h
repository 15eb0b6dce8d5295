#ifndef LUMIDEX_SAMPLES_GENERATOR_SCENES_H_
#define LUMIDEX_SAMPLES_GENERATOR_SCENES_H_

// The pictures of the samples.

#include "Picture.h"

namespace samples {

enum class Light { Day, Evening, Winter, Night };

// Hills behind a lake. The left edge continues the right one, so that a wide picture can be wrapped
// around the viewer.
Picture DrawLake(int width, int height, Light light);

// One person, from the shoulders up.
Picture DrawPortrait(int width, int height);

// Where the heads of DrawPeople are, in parts of a thousand of the picture's width and height.
struct HeadBox {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};
inline constexpr HeadBox kLeftHead = {250, 375, 125, 250};
inline constexpr HeadBox kRightHead = {625, 375, 125, 250};

// Two people at the lake.
Picture DrawPeople(int width, int height);

}  // namespace samples

#endif  // LUMIDEX_SAMPLES_GENERATOR_SCENES_H_
