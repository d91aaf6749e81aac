#include "render/outline.h"

#include <algorithm>
#include <cmath>

namespace tools::render {

using host::drawing::Rect;
using host::images::Bitmap;
using host::images::Pixel;

namespace {

/// How far (x, y) lies outside the rectangle; inside, the distance is negative.
double distanceTo(const Rect& rect, double radius, double x, double y) {
  const double across = std::fabs(x - rect.x - rect.width / 2) - rect.width / 2 + radius;
  const double down = std::fabs(y - rect.y - rect.height / 2) - rect.height / 2 + radius;
  const double corner = std::hypot(std::fmax(across, 0), std::fmax(down, 0));
  return corner + std::fmin(std::fmax(across, down), 0) - radius;
}

/// `color` laid over `below`, both opaque, with `coverage` 0 to 1.
Pixel mixed(Pixel color, Pixel below, double coverage) {
  const auto channel = [&](unsigned shift) {
    const double from = below >> shift & 0xff;
    const double to = color >> shift & 0xff;
    return static_cast<Pixel>(std::lround(from + (to - from) * coverage)) << shift;
  };
  return 0xff000000 | channel(16) | channel(8) | channel(0);
}

}  // namespace

void drawOutline(Bitmap& picture, const Rect& rect, double radius, double width, Pixel color) {
  const double reach = width / 2 + 1;
  const int left = std::max(static_cast<int>(rect.x - reach), 0);
  const int top = std::max(static_cast<int>(rect.y - reach), 0);
  const int right = std::min(static_cast<int>(rect.right() + reach) + 1, picture.width);
  const int bottom = std::min(static_cast<int>(rect.bottom() + reach) + 1, picture.height);
  for (int y = top; y < bottom; ++y) {
    Pixel* const row = picture.row(y);
    for (int x = left; x < right; ++x) {
      const double distance = distanceTo(rect, radius, x + 0.5, y + 0.5);
      const double coverage = std::clamp(width / 2 + 0.5 - std::fabs(distance), 0.0, 1.0);
      if (coverage > 0) row[x] = mixed(color, row[x], coverage);
    }
  }
}

}  // namespace tools::render
