#include "Scenes.h"

#include <algorithm>
#include <array>

namespace samples {
namespace {

struct Palette {
  Color zenith;
  Color horizon;
  Color sun;
  std::array<Color, 3> hills;  // from far to near
  Color water;
  Color tree;
};

// clang-format off
//                          zenith           horizon          sun
//                          hills                                              water         tree
constexpr Palette kDay     = {{ 70, 130, 210}, {205, 228, 245}, {255, 246, 200},
                              {{{140, 165, 190}, {100, 140, 120}, {70, 120, 60}}}, {60, 110, 150}, {30, 75, 45}};
constexpr Palette kEvening = {{ 60,  50, 110}, {250, 160,  90}, {255, 225, 150},
                              {{{150,  95, 120}, {100,  60,  95}, {50, 35, 60}}}, {80,  60, 100}, {30, 22, 40}};
constexpr Palette kWinter  = {{120, 150, 185}, {235, 240, 245}, {255, 255, 245},
                              {{{215, 225, 238}, {190, 205, 222}, {236, 240, 246}}}, {110, 140, 165}, {60, 85, 80}};
constexpr Palette kNight   = {{ 10,  14,  38}, { 50,  60, 100}, {235, 235, 220},
                              {{{ 32,  38,  70}, { 22,  28,  52}, {12, 16, 32}}}, {16,  22,  48}, { 8, 12, 22}};
// clang-format on

const Palette& PaletteOf(Light light) {
  switch (light) {
    case Light::Evening:
      return kEvening;
    case Light::Winter:
      return kWinter;
    case Light::Night:
      return kNight;
    case Light::Day:
      break;
  }
  return kDay;
}

// A wave of arcs of parabolas between -1000 and 1000, close to a sine.
int Wave(int position, int period) {
  const int half = period / 2;
  const int along = position % period;
  const int inHalf = along % half;
  const int height = 4000 * inHalf / half * (half - inHalf) / half;
  return along < half ? height : -height;
}

// How many thousandths of the picture's height the range of hills rises above the shore at x.
int HillHeight(int range, int x, int width) {
  const int shift = x + width * (range + 1) / 7;
  switch (range) {
    case 0:
      return 260 + Wave(shift, width / 2) / 12 + Wave(shift, width / 5) / 40;
    case 1:
      return 150 + Wave(shift, width / 3) / 14 + Wave(shift, width / 8) / 60;
    default:
      return 50 + Wave(shift, width / 2) / 22 + Wave(shift, width / 9) / 90;
  }
}

Color SkyColor(const Palette& palette, int x, int y, int width, int shore) {
  const Color sky = Mix(palette.zenith, palette.horizon, std::min(y, shore), shore);
  const int fromSunX = x - width * 7 / 10;
  const int fromSunY = y - shore * 3 / 10;
  const int distance = fromSunX * fromSunX + fromSunY * fromSunY;
  const int disc = shore / 11;
  if (distance < disc * disc) return palette.sun;
  const int glow = shore * 5 / 8;
  if (distance >= glow * glow) return sky;
  return Mix(palette.sun, sky, 600 + 400 * (distance / glow) / glow, 1000);
}

Color AboveWater(const Palette& palette, int x, int y, int width, int height, int shore) {
  for (int range = 2; range >= 0; --range) {
    const int crest = shore - HillHeight(range, x, width) * height / 1000;
    if (y < crest) continue;
    const Color color = palette.hills[static_cast<std::size_t>(range)];
    return Mix(color, palette.horizon, std::min(y - crest, height / 3), height);
  }
  return SkyColor(palette, x, y, width, shore);
}

void DrawTrees(Picture& picture, const Palette& palette, int shore) {
  constexpr std::array<int, 7> kPlaces = {40, 75, 120, 165, 530, 860, 915};
  const int unit = picture.Height() / 60;
  for (std::size_t i = 0; i < kPlaces.size(); ++i) {
    const int x = picture.Width() * kPlaces[i] / 1000;
    const int tall = unit * (9 + static_cast<int>(i * 5 % 4));
    for (int layer = 0; layer < 3; ++layer) {
      picture.FillSpire(x, shore - tall + layer * tall / 4, shore - tall + (layer + 2) * tall / 4,
                        unit + layer * unit / 2, palette.tree);
    }
  }
}

void MirrorInWater(Picture& picture, const Palette& palette, int shore) {
  for (int y = shore; y < picture.Height(); ++y) {
    const int depth = y - shore;
    for (int x = 0; x < picture.Width(); ++x) {
      const Color mirrored = picture.At(x, shore - 1 - depth);
      picture.Set(x, y, Mix(mirrored, palette.water, 400 + 400 * depth / shore, 1000));
    }
  }
}

struct Looks {
  Color skin;
  Color hair;
  Color shirt;
};

constexpr Color kEyes = {45, 40, 45};
constexpr Color kMouth = {170, 80, 80};

// A head of the given height around a centre, with neck and shoulders below.
void DrawFigure(Picture& picture, int x, int y, int head, const Looks& looks) {
  const int unit = head / 20;
  const Color neck = Mix(looks.skin, {0, 0, 0}, 15, 100);
  picture.FillEllipse(x, y - 2 * unit, 9 * unit, 9 * unit, looks.hair);
  picture.FillRectangle(x - 3 * unit, y + 6 * unit, x + 3 * unit, y + 15 * unit, neck);
  picture.FillEllipse(x, y + 34 * unit, 18 * unit, 22 * unit, looks.shirt);
  picture.FillEllipse(x, y + unit, 7 * unit, 9 * unit, looks.skin);
  picture.FillEllipse(x, y - 6 * unit, 7 * unit, 3 * unit, looks.hair);
  picture.FillEllipse(x - 3 * unit, y, unit, unit, kEyes);
  picture.FillEllipse(x + 3 * unit, y, unit, unit, kEyes);
  picture.FillEllipse(x, y + 5 * unit, 3 * unit, unit, kMouth);
}

}  // namespace

Picture DrawLake(int width, int height, Light light) {
  const Palette& palette = PaletteOf(light);
  const int shore = height * 68 / 100;
  Picture picture(width, height);
  for (int y = 0; y < shore; ++y) {
    for (int x = 0; x < width; ++x) {
      picture.Set(x, y, AboveWater(palette, x, y, width, height, shore));
    }
  }
  DrawTrees(picture, palette, shore);
  MirrorInWater(picture, palette, shore);
  return picture;
}

Picture DrawPortrait(int width, int height) {
  Picture picture(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      picture.Set(x, y, Mix({170, 195, 185}, {95, 125, 120}, x + y, width + height));
    }
  }
  DrawFigure(picture, width / 2, height * 2 / 5, height * 2 / 5,
             {{232, 190, 160}, {80, 50, 35}, {60, 85, 140}});
  return picture;
}

Picture DrawPeople(int width, int height) {
  Picture picture = DrawLake(width, height, Light::Day);
  const auto draw = [&](const HeadBox& box, const Looks& looks) {
    const int x = width * (2 * box.left + box.width) / 2000;
    const int y = height * (2 * box.top + box.height) / 2000;
    DrawFigure(picture, x, y, height * box.height / 1000, looks);
  };
  draw(kLeftHead, {{236, 196, 165}, {185, 140, 70}, {180, 60, 60}});
  draw(kRightHead, {{150, 100, 70}, {35, 28, 26}, {235, 225, 200}});
  return picture;
}

}  // namespace samples
