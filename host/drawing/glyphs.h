#pragma once

#include <cairo.h>

#include "host/drawing/picture.h"
#include "host/drawing/plain.h"

namespace host::drawing {

/// Draws `glyph` around `center`, a whole or half pixel, in the current source, in lines as heavy
/// as those of text of `em_px` pixels an em. The context's matrix must be the identity.
void drawGlyph(cairo_t* context, Glyph glyph, Point center, double em_px);

}  // namespace host::drawing
