#pragma once

#include <optional>

#include "host/drawing/cairo_handles.h"
#include "host/drawing/plain.h"
#include "host/images/bitmap.h"

namespace host::drawing {

/// Whole pixels.
struct PixelSize {
  int width;
  int height;
};

/// `size` points times `scale`, rounded. None when that is not between 1 and kMaxSide on both
/// sides.
std::optional<PixelSize> inPixels(Size size, double scale);

/// A surface on the bitmap's own memory, to be gone before the bitmap is. Cairo only reads from a
/// surface that is drawn from.
Surface surfaceOn(const images::Bitmap& bitmap);

/// A bitmap of transparent pixels. Neither side may be negative.
images::Bitmap clearBitmap(PixelSize size);

}  // namespace host::drawing
