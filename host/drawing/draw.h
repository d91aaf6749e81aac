#pragma once

#include <optional>

#include "host/drawing/fonts.h"
#include "host/drawing/picture.h"
#include "host/images/bitmap.h"

namespace host::drawing {

/// Draws `picture` into a new bitmap of its size times its scale, rounded to whole pixels. None
/// when that is not between 1 and kMaxSide on both sides. Fonts that the picture names are opened
/// in `fonts` and stay there for the next picture. Any thread, but one at a time for one `fonts`.
std::optional<images::Bitmap> draw(const KeyboardPicture& picture, Fonts& fonts);

}  // namespace host::drawing
