#pragma once

#include <optional>

#include "host/drawing/fonts.h"
#include "host/drawing/picture.h"
#include "host/images/placed_bitmap.h"

namespace host::drawing {

/// All that `key` adds to a picture of `size` points at `scale` pixels a point, its edge and what
/// of its symbols stands out included; cut off where that picture ends, and no larger than what is
/// inked. None when cairo fails. Fonts as with `draw`.
std::optional<images::PlacedBitmap> drawAlone(const KeyPicture& key, Size size, double scale,
                                              Fonts& fonts);

}  // namespace host::drawing
