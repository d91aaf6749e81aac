#pragma once

// From points to whole pixels. An edge on a pixel's border is drawn without a blur.

#include <cmath>

#include "host/drawing/plain.h"

namespace host::drawing {

/// `rect` of points in pixels, every edge moved to the nearest pixel's border, so that rectangles
/// that meet in points meet in pixels.
inline Rect toPixels(const Rect& rect, double scale) {
  const double x = std::round(rect.x * scale);
  const double y = std::round(rect.y * scale);
  return {x, y, std::round(rect.right() * scale) - x, std::round(rect.bottom() * scale) - y};
}

/// Whether `rect`, in pixels, has an area and lies where cairo's own numbers reach.
inline bool isDrawable(const Rect& rect) {
  constexpr double kReach = 1 << 20;
  return rect.width >= 1 && rect.height >= 1 && rect.x >= -kReach && rect.y >= -kReach &&
         rect.right() <= kReach && rect.bottom() <= kReach;
}

/// The width of a line or edge of `points`: never less than a pixel.
inline double toLineWidth(double points, double scale) {
  return std::fmax(1, std::round(points * scale));
}

inline Point centerOf(const Rect& rect) {
  return {rect.x + rect.width / 2, rect.y + rect.height / 2};
}

}  // namespace host::drawing
