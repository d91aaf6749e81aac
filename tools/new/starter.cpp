#include "new/starter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/images/encode.h"
#include "starter_text.h"

namespace tools::starter {

using host::images::Bitmap;
using host::images::Pixel;

namespace {

/// A picture for the areas of one shape, in points.
struct Shape {
  const char* name;
  int width;
  int height;
};

// The area behind the keys of an upright phone; the shape of all others, half as large as the
// largest of them: light without edges is as soft at twice its size.
constexpr Shape kShapes[] = {{"background", 320, 216}, {"background-wide", 512, 176}};

struct Color {
  double red;
  double green;
  double blue;
};

constexpr Color kTop = {0x28, 0x49, 0x5B};
constexpr Color kBottom = {0x6D, 0xA3, 0xAD};
constexpr Color kLight = {0xF7, 0xC9, 0x94};

Color mixed(const Color& one, const Color& other, double part) {
  return {std::lerp(one.red, other.red, part), std::lerp(one.green, other.green, part),
          std::lerp(one.blue, other.blue, part)};
}

Pixel pixelOf(const Color& color) {
  const auto byte = [](double component) { return static_cast<Pixel>(std::lround(component)); };
  return host::images::pixelOf(byte(color.red), byte(color.green), byte(color.blue), 0xFF);
}

/// The colour at a place, both coordinates from 0 to 1: dark above, lighter below, and a soft light
/// near the lower right corner.
Color colorAt(double x, double y) {
  const double distance = std::hypot((x - 0.82) * 1.1, y - 1.05);
  const double light = 0.4 * std::exp(-distance * distance * 5);
  return mixed(mixed(kTop, kBottom, y), kLight, light);
}

std::string background(const Shape& shape, int scale) {
  Bitmap bitmap{shape.width * scale, shape.height * scale, true, {}};
  bitmap.pixels.reserve(static_cast<std::size_t>(bitmap.width) *
                        static_cast<std::size_t>(bitmap.height));
  for (int y = 0; y < bitmap.height; ++y) {
    for (int x = 0; x < bitmap.width; ++x) {
      bitmap.pixels.push_back(
          pixelOf(colorAt((x + 0.5) / bitmap.width, (y + 0.5) / bitmap.height)));
    }
  }
  return host::images::encodePng(bitmap);
}

}  // namespace

std::vector<File> files() {
  std::vector<File> files = {{"theme.plist", std::string(kThemeText)}};
  for (const Shape& shape : kShapes) {
    const std::string name = shape.name;
    files.push_back({name + ".png", background(shape, 1)});
    files.push_back({name + "@2x.png", background(shape, 2)});
  }
  return files;
}

}  // namespace tools::starter
