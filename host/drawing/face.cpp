#include "host/drawing/face.h"

#include <cairo-ft.h>
#include <ft2build.h>
#include <hb-ot.h>
#include FT_FREETYPE_H

#include <utility>

namespace host::drawing {
namespace {

/// What cairo holds of FreeType. Cairo lets go of a face when it likes, which may be later than we.
struct OpenFace {
  FontLibrary library;
  FT_Face face = nullptr;

  OpenFace(const FontLibrary& from, const FontFile& file) : library(from) {
    if (FT_New_Face(library.get(), file.path.c_str(), file.index, &face) != 0) face = nullptr;
  }
  ~OpenFace() {
    if (face) FT_Done_Face(face);
  }
  OpenFace(const OpenFace&) = delete;
  OpenFace& operator=(const OpenFace&) = delete;
};

const cairo_user_data_key_t kOpenFaceKey{};

bool isOutlined(const OpenFace& open) {
  return FT_IS_SCALABLE(open.face) && !FT_HAS_COLOR(open.face);
}

/// Null when cairo refuses.
FontFace giveToCairo(std::unique_ptr<OpenFace> open) {
  FontFace face(cairo_ft_font_face_create_for_ft_face(open->face, FT_LOAD_FORCE_AUTOHINT));
  const auto release = [](void* held) { delete static_cast<OpenFace*>(held); };
  if (cairo_font_face_set_user_data(face.get(), &kOpenFaceKey, open.get(), release) !=
      CAIRO_STATUS_SUCCESS) {
    return nullptr;
  }
  static_cast<void>(open.release());  // the face lets it go
  return face;
}

struct FreeBlob {
  void operator()(hb_blob_t* blob) const { hb_blob_destroy(blob); }
};
struct FreeFace {
  void operator()(hb_face_t* face) const { hb_face_destroy(face); }
};

hb_font_t* openForShaping(const FontFile& file) {
  const std::unique_ptr<hb_blob_t, FreeBlob> blob(
      hb_blob_create_from_file_or_fail(file.path.c_str()));
  if (!blob) return nullptr;
  const auto index = static_cast<unsigned>(file.index);
  const std::unique_ptr<hb_face_t, FreeFace> face(hb_face_create(blob.get(), index & 0xffff));
  hb_font_t* font = hb_font_create(face.get());
  // What it gives out when it has no memory.
  if (face.get() == hb_face_get_empty() || font == hb_font_get_empty()) return nullptr;
  if (const unsigned instance = index >> 16) hb_font_set_var_named_instance(font, instance - 1);
  return font;
}

/// A metric of the font in ems, estimated from its glyphs when the font does not tell.
double metric(hb_font_t* font, hb_ot_metrics_tag_t tag) {
  hb_position_t units = 0;
  hb_ot_metrics_get_position_with_fallback(font, tag, &units);
  return static_cast<double>(units) / hb_face_get_upem(hb_font_get_face(font));
}

ScaledFont makeScaled(const FontFace& face, double size_px) {
  cairo_matrix_t em;
  cairo_matrix_t identity;
  cairo_matrix_init_scale(&em, size_px, size_px);
  cairo_matrix_init_identity(&identity);
  const FontOptions options(cairo_font_options_create());
  cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
  // Slight hinting moves outlines up and down alone: flat tops get sharp, widths stay. The fonts'
  // own hints would not do, for the system font has none.
  cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
  cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
  return ScaledFont(cairo_scaled_font_create(face.get(), &em, &identity, options.get()));
}

bool hasSucceeded(const ScaledFont& font) {
  return cairo_scaled_font_status(font.get()) == CAIRO_STATUS_SUCCESS;
}

}  // namespace

FontLibrary startFontLibrary() {
  FT_Library library = nullptr;
  if (FT_Init_FreeType(&library) != 0) return nullptr;
  return FontLibrary(library, [](FT_Library started) { FT_Done_FreeType(started); });
}

std::unique_ptr<Face> Face::open(const FontLibrary& library, const FontFile& file,
                                 FontTraits traits) {
  if (!library) return nullptr;
  std::unique_ptr<Face> face(new Face);
  face->traits_ = traits;
  auto opened = std::make_unique<OpenFace>(library, file);
  if (!opened->face) return nullptr;
  face->has_outlines_ = isOutlined(*opened);
  face->cairo_face_ = giveToCairo(std::move(opened));
  face->shaper_.reset(openForShaping(file));
  if (!face->cairo_face_ || !face->shaper_) return nullptr;
  face->cap_height_ = metric(face->shaper(), HB_OT_METRICS_TAG_CAP_HEIGHT);
  face->x_height_ = metric(face->shaper(), HB_OT_METRICS_TAG_X_HEIGHT);
  return face;
}

bool Face::has(char32_t character) const {
  hb_codepoint_t glyph = 0;
  return hb_font_get_nominal_glyph(shaper(), character, &glyph) != 0;
}

double Face::unitsPerEm() const {
  return hb_face_get_upem(hb_font_get_face(shaper()));
}

cairo_scaled_font_t* Face::scaled(double size_px) const {
  if (const auto known = scaled_.find(size_px); known != scaled_.end()) {
    if (hasSucceeded(known->second)) return known->second.get();
    scaled_.erase(known);
  }
  ScaledFont font = makeScaled(cairo_face_, size_px);
  if (!hasSucceeded(font)) return nullptr;
  return scaled_.emplace(size_px, std::move(font)).first->second.get();
}

}  // namespace host::drawing
