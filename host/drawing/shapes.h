#pragma once

#include <cairo.h>

#include "host/drawing/picture.h"
#include "host/drawing/plain.h"

// Shapes in pixels; the context's matrix must be the identity.

namespace host::drawing {

void setSource(cairo_t* context, const Rgba& color);

/// Adds a rectangle with corners of `radius`, or as round as it can be, to the path.
void addRoundedRect(cairo_t* context, const Rect& rect, double radius);

/// Fills the path, which lies within `bounds`, and clears it. A gradient has its first colour in
/// the first row of pixels of `bounds` and its last colour in the last.
void fillPath(cairo_t* context, const Fill& fill, const Rect& bounds);

/// Leaves out what lies within a rounded rectangle of all that is drawn from now on.
void clipOut(cairo_t* context, const Rect& rect, double radius);

}  // namespace host::drawing
