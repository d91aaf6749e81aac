#pragma once

#include <cairo.h>
#include <memory>

namespace host::drawing {

struct FreeSurface {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct FreeContext {
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
struct FreePattern {
  void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
struct FreeFontFace {
  void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
};
struct FreeScaledFont {
  void operator()(cairo_scaled_font_t* font) const { cairo_scaled_font_destroy(font); }
};
struct FreeFontOptions {
  void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};

using Surface = std::unique_ptr<cairo_surface_t, FreeSurface>;
using Context = std::unique_ptr<cairo_t, FreeContext>;
using Pattern = std::unique_ptr<cairo_pattern_t, FreePattern>;
using FontFace = std::unique_ptr<cairo_font_face_t, FreeFontFace>;
using ScaledFont = std::unique_ptr<cairo_scaled_font_t, FreeScaledFont>;
using FontOptions = std::unique_ptr<cairo_font_options_t, FreeFontOptions>;

/// Undoes on destruction what changes of a context since its construction.
class SavedState {
 public:
  explicit SavedState(cairo_t* context) : context_(context) { cairo_save(context_); }
  ~SavedState() { cairo_restore(context_); }
  SavedState(const SavedState&) = delete;
  SavedState& operator=(const SavedState&) = delete;

 private:
  cairo_t* context_;
};

}  // namespace host::drawing
