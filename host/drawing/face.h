#pragma once

#include <cairo.h>
#include <hb.h>
#include <map>
#include <memory>

#include "host/drawing/cairo_handles.h"
#include "host/drawing/font_files.h"

struct FT_LibraryRec_;

namespace host::drawing {

using FontLibrary = std::shared_ptr<FT_LibraryRec_>;

/// FreeType, started; null when it can't be.
FontLibrary startFontLibrary();

/// An open font face: cairo draws with it, HarfBuzz shapes with it.
class Face {
 public:
  /// Null when the file can't be read or is no font. The face keeps `library` alive.
  static std::unique_ptr<Face> open(const FontLibrary& library, const FontFile& file,
                                    FontTraits traits);

  /// False once something has failed for cairo, which keeps its errors for ever.
  bool isSound() const { return cairo_font_face_status(cairo_face_.get()) == CAIRO_STATUS_SUCCESS; }

  bool has(char32_t character) const;
  /// What the face was looked up for.
  FontTraits traits() const { return traits_; }
  /// For shaping, in font units, of which an em has unitsPerEm().
  hb_font_t* shaper() const { return shaper_.get(); }
  double unitsPerEm() const;
  /// Heights above the baseline in ems: of a capital, and of a small letter without ascender.
  double capHeight() const { return cap_height_; }
  double xHeight() const { return x_height_; }
  /// Whether its glyphs are shapes, and neither bitmaps nor in colours of their own.
  bool hasOutlines() const { return has_outlines_; }
  /// For drawing at `size_px` pixels an em; owned by the face until the next call. Null when cairo
  /// refuses.
  cairo_scaled_font_t* scaled(double size_px) const;

 private:
  struct FreeShaper {
    void operator()(hb_font_t* font) const { hb_font_destroy(font); }
  };
  Face() = default;

  FontTraits traits_;
  FontFace cairo_face_;
  std::unique_ptr<hb_font_t, FreeShaper> shaper_;
  bool has_outlines_ = true;
  double cap_height_ = 0;
  double x_height_ = 0;
  mutable std::map<double, ScaledFont> scaled_;
};

}  // namespace host::drawing
