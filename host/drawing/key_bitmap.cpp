#include "host/drawing/key_bitmap.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "host/drawing/bitmap_surface.h"
#include "host/drawing/key_painter.h"
#include "host/drawing/pixels.h"

namespace host::drawing {
namespace {

using images::Bitmap;
using images::PlacedBitmap;

/// How far around a key's face `symbol` may reach, in points. Text is as wide as its face at most,
/// and no glyph lies farther from the face's middle than the size of its text.
double reach(const std::optional<Symbol>& symbol) {
  if (!symbol) return 0;
  const TextStyle& style = symbol->style;
  const double etch = style.etch_color ? std::fmax(std::fabs(style.etch_offset_pt.x),
                                                   std::fabs(style.etch_offset_pt.y))
                                       : 0;
  return style.size_pt + etch;
}

/// The pixels that `key` may touch of a picture of `size`.
PlacedBitmap roomFor(const KeyPicture& key, PixelSize size, double scale) {
  constexpr double kRounding = 2;
  const double depth = key.edge ? key.edge->depth_pt : 0;
  const double around = std::fmax(depth, std::fmax(reach(key.symbol), reach(key.secondary_symbol)));
  const double margin = std::fmin(std::ceil(around * scale) + kRounding, kMaxSide);
  const Rect face = toPixels(key.frame, scale);
  const double left = std::clamp(face.x - margin, 0.0, 1.0 * size.width);
  const double top = std::clamp(face.y - margin, 0.0, 1.0 * size.height);
  const double right = std::clamp(face.right() + margin, left, 1.0 * size.width);
  const double bottom = std::clamp(face.bottom() + margin, top, 1.0 * size.height);
  return {static_cast<int>(left), static_cast<int>(top),
          clearBitmap({static_cast<int>(right - left), static_cast<int>(bottom - top)})};
}

bool isInked(images::Pixel pixel) {
  return pixel != 0;
}

bool rowIsInked(const Bitmap& bitmap, int y) {
  return std::any_of(bitmap.row(y), bitmap.row(y) + bitmap.width, isInked);
}

bool columnIsInked(const Bitmap& bitmap, int x, int top, int bottom) {
  for (int y = top; y < bottom; ++y) {
    if (isInked(bitmap.at(x, y))) return true;
  }
  return false;
}

PlacedBitmap cut(const PlacedBitmap& from, int left, int top, int right, int bottom) {
  PlacedBitmap piece{from.left + left, from.top + top, clearBitmap({right - left, bottom - top})};
  for (int y = top; y < bottom; ++y) {
    const images::Pixel* const row = from.bitmap.row(y);
    std::copy(row + left, row + right,
              piece.bitmap.pixels.begin() + std::ptrdiff_t{y - top} * (right - left));
  }
  return piece;
}

PlacedBitmap cutToInk(const PlacedBitmap& whole) {
  const Bitmap& bitmap = whole.bitmap;
  int top = 0;
  int bottom = bitmap.height;
  while (top < bottom && !rowIsInked(bitmap, top)) ++top;
  if (top == bottom) return {};
  while (!rowIsInked(bitmap, bottom - 1)) --bottom;
  int left = 0;
  int right = bitmap.width;
  while (!columnIsInked(bitmap, left, top, bottom)) ++left;
  while (!columnIsInked(bitmap, right - 1, top, bottom)) --right;
  return cut(whole, left, top, right, bottom);
}

}  // namespace

std::optional<PlacedBitmap> drawAlone(const KeyPicture& key, Size size, double scale,
                                      Fonts& fonts) {
  const auto whole = inPixels(size, scale);
  if (!whole || !isDrawable(toPixels(key.frame, scale))) return PlacedBitmap();
  const PlacedBitmap room = roomFor(key, *whole, scale);
  if (!room.bitmap.isValid()) return PlacedBitmap();
  const Surface surface = surfaceOn(room.bitmap);
  // The context's matrix stays the identity, as the key's painter wants it.
  cairo_surface_set_device_offset(surface.get(), -room.left, -room.top);
  const Context context(cairo_create(surface.get()));
  drawKey(context.get(), key, scale, fonts);
  cairo_surface_flush(surface.get());
  if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) return std::nullopt;
  return cutToInk(room);
}

}  // namespace host::drawing
