#pragma once

#include <algorithm>
#include <climits>

#include "host/drawing/plain.h"
#include "host/images/bitmap.h"

namespace host {

/// The pixels from `left` and `top` up to, and not with, `right` and `bottom`.
struct Box {
  int left = INT_MAX;
  int top = INT_MAX;
  int right = INT_MIN;
  int bottom = INT_MIN;

  bool empty() const { return left >= right; }
  double middle() const { return (left + right) / 2.0; }
  void include(int x, int y) {
    left = std::min(left, x);
    top = std::min(top, y);
    right = std::max(right, x + 1);
    bottom = std::max(bottom, y + 1);
  }
  Box moved(int x, int y) const { return {left + x, top + y, right + x, bottom + y}; }
  bool contains(const Box& other) const {
    return left <= other.left && top <= other.top && right >= other.right && bottom >= other.bottom;
  }
  friend bool operator==(const Box&, const Box&) = default;
};

/// `rect`, whose edges lie on whole pixels at `scale`.
inline Box boxOf(const drawing::Rect& rect, double scale) {
  return {static_cast<int>(rect.x * scale), static_cast<int>(rect.y * scale),
          static_cast<int>(rect.right() * scale), static_cast<int>(rect.bottom() * scale)};
}

/// What `counts` of the pixels of `area`.
template <typename Counts>
Box extent(const images::Bitmap& bitmap, const Box& area, Counts counts) {
  Box extent;
  for (int y = std::max(0, area.top); y < std::min(bitmap.height, area.bottom); ++y) {
    for (int x = std::max(0, area.left); x < std::min(bitmap.width, area.right); ++x) {
      if (counts(bitmap.at(x, y))) extent.include(x, y);
    }
  }
  return extent;
}

inline Box whole(const images::Bitmap& bitmap) {
  return {0, 0, bitmap.width, bitmap.height};
}

constexpr int alphaOf(images::Pixel pixel) {
  return static_cast<int>(pixel >> 24);
}

/// What of `bitmap` is at least half covered.
inline Box inked(const images::Bitmap& bitmap) {
  return extent(bitmap, whole(bitmap), [](images::Pixel pixel) { return alphaOf(pixel) >= 0x80; });
}

}  // namespace host
