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
  int left = one.width;
  int top = one.height;
  int right = 0;
  int bottom = 0;
  for (int y = 0; y < one.height; ++y) {
    Pixel* const marked = difference.marked.row(y);
    for (int x = 0; x < one.width; ++x) {
      const bool differs = one.at(x, y) != other.at(x, y);
      marked[x] = differs ? kMark : pale(one.at(x, y));
      if (!differs) continue;
      ++difference.pixels;
      left = std::min(left, x);
      top = std::min(top, y);
      right = std::max(right, x + 1);
      bottom = std::max(bottom, y + 1);
    }
  }
  if (difference.pixels > 0) {
    difference.bounds = {static_cast<double>(left), static_cast<double>(top),
                         static_cast<double>(right - left), static_cast<double>(bottom - top)};
  }
  return difference;
}

}  // namespace tools::render
