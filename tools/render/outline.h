#pragma once

#include "host/drawing/plain.h"
#include "host/images/bitmap.h"

namespace tools::render {

/// Draws a line of `width` around a rectangle with round corners, all in pixels, its middle on the
/// rectangle's edge: an opaque colour with smooth edges over an opaque picture. What lies outside
/// the picture is left out.
void drawOutline(host::images::Bitmap& picture, const host::drawing::Rect& rect, double radius,
                 double width, host::images::Pixel color);

}  // namespace tools::render
