#include "Picture.h"

#include <algorithm>

namespace samples {

Color Mix(Color from, Color to, int part, int whole) {
  const auto mix = [=](int a, int b) { return a + (b - a) * part / whole; };
  return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue)};
}

Picture::Picture(int width, int height)
    : m_width(width),
      m_height(height),
      m_pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

std::size_t Picture::IndexOf(int x, int y) const {
  return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
         static_cast<std::size_t>(x);
}

Color Picture::At(int x, int y) const {
  return m_pixels[IndexOf(std::clamp(x, 0, m_width - 1), std::clamp(y, 0, m_height - 1))];
}

void Picture::Set(int x, int y, Color color) {
  if (x < 0 || x >= m_width || y < 0 || y >= m_height) return;
  m_pixels[IndexOf(x, y)] = color;
}

void Picture::FillEllipse(int centerX, int centerY, int radiusX, int radiusY, Color color) {
  const std::int64_t squareX = std::int64_t{radiusX} * radiusX;
  const std::int64_t squareY = std::int64_t{radiusY} * radiusY;
  for (int y = -radiusY; y <= radiusY; ++y) {
    for (int x = -radiusX; x <= radiusX; ++x) {
      if (squareY * x * x + squareX * y * y > squareX * squareY) continue;
      Set(centerX + x, centerY + y, color);
    }
  }
}

void Picture::FillRectangle(int left, int top, int right, int bottom, Color color) {
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; ++x) Set(x, y, color);
  }
}

void Picture::FillSpire(int centerX, int top, int bottom, int halfWidth, Color color) {
  for (int y = top; y < bottom; ++y) {
    const int reach = halfWidth * (y - top) / (bottom - top);
    FillRectangle(centerX - reach, y, centerX + reach + 1, y + 1, color);
  }
}

Picture Halve(const Picture& picture) {
  Picture half(picture.Width() / 2, picture.Height() / 2);
  for (int y = 0; y < half.Height(); ++y) {
    for (int x = 0; x < half.Width(); ++x) {
      const Color a = picture.At(2 * x, 2 * y);
      const Color b = picture.At(2 * x + 1, 2 * y);
      const Color c = picture.At(2 * x, 2 * y + 1);
      const Color d = picture.At(2 * x + 1, 2 * y + 1);
      half.Set(
          x, y,
          {(a.red + b.red + c.red + d.red + 2) / 4, (a.green + b.green + c.green + d.green + 2) / 4,
           (a.blue + b.blue + c.blue + d.blue + 2) / 4});
    }
  }
  return half;
}

Picture TurnLeft(const Picture& picture) {
  Picture turned(picture.Height(), picture.Width());
  for (int y = 0; y < turned.Height(); ++y) {
    for (int x = 0; x < turned.Width(); ++x) {
      turned.Set(x, y, picture.At(picture.Width() - 1 - y, x));
    }
  }
  return turned;
}

}  // namespace samples
