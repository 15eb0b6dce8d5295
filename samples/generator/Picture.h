#ifndef LUMIDEX_SAMPLES_GENERATOR_PICTURE_H_
#define LUMIDEX_SAMPLES_GENERATOR_PICTURE_H_

// A raster of RGB pixels with the few shapes that the scenes need. All arithmetic is in integers,
// so that every compiler draws the same pixels.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace samples {

struct Color {
  int red = 0;
  int green = 0;
  int blue = 0;
};

// The colour that stands at `part` of `whole` on the way from one colour to another.
Color Mix(Color from, Color to, int part, int whole);

class Picture {
 public:
  Picture(int width, int height);

  int Width() const { return m_width; }
  int Height() const { return m_height; }

  // Beyond an edge stands the pixel nearest to it.
  Color At(int x, int y) const;

  // Beyond an edge nothing is painted.
  void Set(int x, int y, Color color);

  void FillEllipse(int centerX, int centerY, int radiusX, int radiusY, Color color);
  void FillRectangle(int left, int top, int right, int bottom, Color color);

  // A triangle that stands on its base.
  void FillSpire(int centerX, int top, int bottom, int halfWidth, Color color);

 private:
  std::size_t IndexOf(int x, int y) const;

  int m_width;
  int m_height;
  std::vector<Color> m_pixels;
};

// Half as wide and half as high; a pixel is the average of four.
Picture Halve(const Picture& picture);

// Turned by a quarter against the clock: what a camera that was held upright stores with EXIF
// orientation 6.
Picture TurnLeft(const Picture& picture);

}  // namespace samples

#endif  // LUMIDEX_SAMPLES_GENERATOR_PICTURE_H_
