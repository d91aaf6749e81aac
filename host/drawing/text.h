#pragma once

#include <cairo.h>
#include <string_view>
#include <vector>

#include "host/drawing/face.h"
#include "host/drawing/fonts.h"
#include "host/drawing/plain.h"

namespace host::drawing {

/// A text of one size as glyphs, in pixels from the left end of its baseline.
struct SetText {
  struct Run {
    const Face* face;
    std::vector<cairo_glyph_t> glyphs;
  };
  std::vector<Run> runs;
  double size_px = 0;
  double advance = 0;
  /// What is inked; without an area when nothing is.
  Rect ink;
};

/// Sets `utf8` in `face`, characters that it lacks in faces that have them. What isn't UTF-8
/// becomes the replacement character. No runs for a null face.
SetText setText(std::string_view utf8, const Face* face, double size_px, Fonts& fonts);

/// Draws `text` in the current source, its baseline starting at (x, y). The context's matrix must
/// be the identity.
void showText(cairo_t* context, const SetText& text, double x, double y);

}  // namespace host::drawing
