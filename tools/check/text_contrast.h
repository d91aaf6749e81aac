#pragma once

#include <optional>

#include "host/drawing/fonts.h"
#include "host/drawing/picture.h"
#include "host/images/bitmap.h"

namespace tools::check {

/// The contrast of a text colour with the pixels that it is drawn on, from 1 to 21: the ratio of
/// relative luminances, as accessibility guidelines define it, that nine pixels of ten reach. A
/// translucent text is mixed with each pixel first. Pixels that are not opaque count for nothing;
/// none when there are no others.
std::optional<double> contrastOn(const host::images::Bitmap& pixels, host::drawing::Rgba text);

/// The contrast that `symbol` needs: 4.5; 3 for text of 18 points or more, for bold text of 14, and
/// for what is drawn and no text.
double neededContrast(const host::drawing::Symbol& symbol);

/// Where the symbols of a key lie on its face, in whole points.
struct SymbolBoxes {
  host::drawing::Rect symbol;
  host::drawing::Rect secondary;
};
SymbolBoxes boxesOf(const host::drawing::KeyPicture& key);

/// What lies behind a symbol: the pixels of `board` with `key` on it, its symbols left out, in
/// `box`.
std::optional<host::images::Bitmap> drawBehind(const host::drawing::KeyboardPicture& board,
                                               const host::drawing::KeyPicture& key,
                                               const host::drawing::Rect& box,
                                               host::drawing::Fonts& fonts);

}  // namespace tools::check
