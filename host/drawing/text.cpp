#include "host/drawing/text.h"

#include <algorithm>
#include <memory>
#include <span>

namespace host::drawing {
namespace {

struct FreeBuffer {
  void operator()(hb_buffer_t* buffer) const { hb_buffer_destroy(buffer); }
};
using Buffer = std::unique_ptr<hb_buffer_t, FreeBuffer>;

/// A stretch of a text, in bytes, that one face draws.
struct Stretch {
  const Face* face;
  unsigned start;
  unsigned length;
};

/// Marks and joiners belong to the character before them, whatever face that takes.
bool continues(char32_t character) {
  constexpr char32_t kJoiner = 0x200d;
  constexpr char32_t kFirstSelector = 0xfe00;
  constexpr char32_t kLastSelector = 0xfe0f;
  if (character == kJoiner) return true;
  if (character >= kFirstSelector && character <= kLastSelector) return true;
  const auto category = hb_unicode_general_category(hb_unicode_funcs_get_default(), character);
  return category == HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK ||
         category == HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK ||
         category == HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK;
}

Buffer bufferOf(std::string_view utf8, unsigned start, unsigned length) {
  Buffer buffer(hb_buffer_create());
  hb_buffer_add_utf8(buffer.get(), utf8.data(), static_cast<int>(utf8.size()), start,
                     static_cast<int>(length));
  return buffer;
}

std::vector<Stretch> stretchesOf(std::string_view utf8, const Face* face, Fonts& fonts) {
  const auto size = static_cast<unsigned>(utf8.size());
  const Buffer buffer = bufferOf(utf8, 0, size);
  unsigned count = 0;
  const hb_glyph_info_t* first = hb_buffer_get_glyph_infos(buffer.get(), &count);
  std::vector<Stretch> stretches;
  // Before it is shaped, a buffer holds the characters of the text and where each begins.
  for (const hb_glyph_info_t& character : std::span(first, count)) {
    if (!stretches.empty() && continues(character.codepoint)) continue;
    const Face* covering = fonts.covering(character.codepoint, face);
    if (!stretches.empty() && stretches.back().face == covering) continue;
    stretches.push_back({covering, character.cluster, 0});
  }
  for (std::size_t i = 0; i < stretches.size(); ++i) {
    const unsigned end = i + 1 < stretches.size() ? stretches[i + 1].start : size;
    stretches[i].length = end - stretches[i].start;
  }
  return stretches;
}

/// Appends the glyphs of `stretch` to `text` and moves its advance past them.
void shape(std::string_view utf8, const Stretch& stretch, SetText& text) {
  const Buffer buffer = bufferOf(utf8, stretch.start, stretch.length);
  hb_buffer_guess_segment_properties(buffer.get());
  hb_shape(stretch.face->shaper(), buffer.get(), nullptr, 0);
  unsigned count = 0;
  const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer.get(), &count);
  const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer.get(), &count);
  const double unit = text.size_px / stretch.face->unitsPerEm();
  SetText::Run run{stretch.face, {}};
  for (unsigned i = 0; i < count; ++i) {
    run.glyphs.push_back({infos[i].codepoint, text.advance + positions[i].x_offset * unit,
                          -positions[i].y_offset * unit});
    text.advance += positions[i].x_advance * unit;
  }
  text.runs.push_back(std::move(run));
}

/// What `run` inks, from the left end of the text's baseline.
Rect inkOf(const SetText::Run& run, double size_px) {
  cairo_scaled_font_t* font = run.face->scaled(size_px);
  if (!font || run.glyphs.empty()) return {};
  cairo_text_extents_t ink;
  cairo_scaled_font_glyph_extents(font, run.glyphs.data(), static_cast<int>(run.glyphs.size()),
                                  &ink);
  // Bearings are told from the first glyph's own origin.
  const cairo_glyph_t& first = run.glyphs.front();
  return {first.x + ink.x_bearing, first.y + ink.y_bearing, ink.width, ink.height};
}

Rect unionOf(const Rect& one, const Rect& other) {
  const double left = std::min(one.x, other.x);
  const double top = std::min(one.y, other.y);
  return {left, top, std::max(one.right(), other.right()) - left,
          std::max(one.bottom(), other.bottom()) - top};
}

void measureInk(SetText& text) {
  for (const SetText::Run& run : text.runs) {
    const Rect ink = inkOf(run, text.size_px);
    if (ink.width > 0) text.ink = text.ink.width > 0 ? unionOf(text.ink, ink) : ink;
  }
}

/// Cairo moves the glyphs that it keeps as bitmaps to whole pixels: quick, and fine for large ones,
/// but small ones would stand visibly beside the middle of their key and unevenly in a word.
void showGlyphs(cairo_t* context, const std::vector<cairo_glyph_t>& glyphs, bool between_pixels) {
  const int count = static_cast<int>(glyphs.size());
  if (!between_pixels) {
    cairo_show_glyphs(context, glyphs.data(), count);
    return;
  }
  cairo_new_path(context);
  cairo_glyph_path(context, glyphs.data(), count);
  cairo_fill(context);
}

}  // namespace

SetText setText(std::string_view utf8, const Face* face, double size_px, Fonts& fonts) {
  SetText text;
  text.size_px = size_px;
  if (!face) return text;
  for (const Stretch& stretch : stretchesOf(utf8, face, fonts)) shape(utf8, stretch, text);
  measureInk(text);
  return text;
}

void showText(cairo_t* context, const SetText& text, double x, double y) {
  constexpr double kSmall = 28;
  const bool isSmall = text.size_px < kSmall;
  for (const SetText::Run& run : text.runs) {
    cairo_scaled_font_t* font = run.face->scaled(text.size_px);
    if (!font) continue;
    std::vector<cairo_glyph_t> glyphs = run.glyphs;
    for (cairo_glyph_t& glyph : glyphs) {
      glyph.x += x;
      glyph.y += y;
    }
    cairo_set_scaled_font(context, font);
    showGlyphs(context, glyphs, isSmall && run.face->hasOutlines());
  }
}

}  // namespace host::drawing
