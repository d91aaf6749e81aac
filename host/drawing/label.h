#pragma once

#include <cairo.h>

#include "host/drawing/fonts.h"
#include "host/drawing/picture.h"

namespace host::drawing {

/// Draws `symbol` in the middle of `area` (pixels), its etch beneath it. Texts of one font and size
/// in areas of one row share a baseline, whatever their letters. A text too wide is set smaller.
/// The context's matrix must be the identity.
void drawSymbol(cairo_t* context, const Symbol& symbol, const Rect& area, double scale,
                Fonts& fonts);

/// Draws `upper` above `lower`, both together in the middle of `area` by the height of capitals, so
/// that the pairs of a row stand on the same two lines whatever their marks.
void drawPair(cairo_t* context, const Symbol& upper, const Symbol& lower, const Rect& area,
              double scale, Fonts& fonts);

}  // namespace host::drawing
