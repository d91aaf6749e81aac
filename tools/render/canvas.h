#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "host/drawing/plain.h"
#include "host/images/bitmap.h"

namespace tools::render {

/// A place for a picture, with its caption below.
struct Cell {
  host::drawing::Rect frame;  ///< of the picture, in points
  std::string caption;
};

/// The room that a caption takes below its picture, and what is left free around pictures, in
/// points.
inline constexpr double kCaptionHeight = 24;
inline constexpr double kGap = 16;

/// A light table on which pictures lie, each with a caption. All memory is taken at once.
class Canvas {
 public:
  /// `size` in points, `scale` in pixels a point.
  Canvas(host::drawing::Size size, double scale, std::vector<Cell> cells);

  /// Lays `picture` into a cell; what exceeds the cell's frame is cut off. Several threads may fill
  /// different cells at once.
  void put(std::size_t cell, const host::images::Bitmap& picture);

  /// Invalid when the table is too large to be drawn.
  const host::images::Bitmap& bitmap() const { return bitmap_; }
  /// The same, no longer the canvas's.
  host::images::Bitmap take() { return std::move(bitmap_); }

 private:
  double scale_;
  std::vector<Cell> cells_;
  host::images::Bitmap bitmap_;
};

/// Pictures of one size beside each other, each with its caption.
host::images::Bitmap sideBySide(std::span<const host::images::Bitmap> pictures,
                                std::span<const std::string> captions, double scale);

}  // namespace tools::render
