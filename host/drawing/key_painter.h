#pragma once

#include <cairo.h>

#include "host/drawing/fonts.h"
#include "host/drawing/picture.h"

namespace host::drawing {

/// Draws `key` at `scale` pixels a point. The context's matrix must be the identity.
void drawKey(cairo_t* context, const KeyPicture& key, double scale, Fonts& fonts);

}  // namespace host::drawing
