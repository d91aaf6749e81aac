#include "render/difference.h"

#include <algorithm>

namespace tools::render {

using host::images::Bitmap;
using host::images::Pixel;

namespace {

constexpr Pixel kMark = 0xffe6007e;

/// Light enough that marks stand out of it, dark enough to tell where they are.
Pixel pale(Pixel pixel) {
  const Pixel sum = (pixel >> 16 & 0xff) * 3 + (pixel >> 8 & 0xff) * 6 + (pixel & 0xff);
  const Pixel gray = 170 + sum * 80 / (10 * 255);
  return 0xff000000 | gray << 16 | gray << 8 | gray;
}

}  // namespace

Difference differenceOf(const Bitmap& one, const Bitmap& other) {
  Difference difference;
  difference.marked = one;
  difference.marked.opaque = true;
  const auto mark = [&](Pixel a, Pixel b) {
    if (a == b) return pale(a);
    ++difference.pixels;
    return kMark;
  };
  std::ranges::transform(one.pixels, other.pixels, difference.marked.pixels.begin(), mark);
  return difference;
}

}  // namespace tools::render
