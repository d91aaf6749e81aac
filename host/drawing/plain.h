#pragma once

// The plain values of drawing. Points, not pixels; the origin is top left and y grows down.

namespace host::drawing {

struct Point {
  double x = 0;
  double y = 0;
  friend constexpr bool operator==(const Point&, const Point&) = default;
};

struct Size {
  double width = 0;
  double height = 0;
  friend constexpr bool operator==(const Size&, const Size&) = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  constexpr double right() const { return x + width; }
  constexpr double bottom() const { return y + height; }
  friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

constexpr Rect moved(const Rect& rect, Point by) {
  return {rect.x + by.x, rect.y + by.y, rect.width, rect.height};
}

/// A colour, each component 0 to 1, not premultiplied.
struct Rgba {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
  friend constexpr bool operator==(const Rgba&, const Rgba&) = default;
};

}  // namespace host::drawing
