#pragma once

#include <memory>

#include "host/images/bitmap.h"

namespace host::images {

/// A piece of a picture, and where its first pixel lies from the picture's first, in pixels. A
/// bitmap without pixels is a piece of which nothing is seen.
struct PlacedBitmap {
  int left = 0;
  int top = 0;
  Bitmap bitmap;

  bool operator==(const PlacedBitmap&) const = default;
};

/// One that several keep.
using SharedBitmap = std::shared_ptr<const PlacedBitmap>;

}  // namespace host::images
