#include "host/drawing/label.h"

#include <cmath>

#include "host/drawing/cairo_handles.h"
#include "host/drawing/glyphs.h"
#include "host/drawing/pixels.h"
#include "host/drawing/shapes.h"
#include "host/drawing/text.h"

namespace host::drawing {
namespace {

/// `rect` with room for the soft edges of what lies in it, in whole pixels.
Rect around(const Rect& rect) {
  constexpr double kRoom = 2;
  const double left = std::floor(rect.x) - kRoom;
  const double top = std::floor(rect.y) - kRoom;
  return {left, top, std::ceil(rect.right()) + kRoom - left,
          std::ceil(rect.bottom()) + kRoom - top};
}

/// Draws in `color` what lies in `bounds`. The strokes of a glyph overlap, so it becomes
/// translucent as a whole.
template <typename Draw>
void drawIn(cairo_t* context, const Rgba& color, const Rect& bounds, Draw draw) {
  if (color.alpha >= 1) {
    setSource(context, color);
    draw();
    return;
  }
  const SavedState saved(context);
  // A group is as large as the clip: without one, the whole keyboard would be mixed for each key.
  cairo_new_path(context);
  cairo_rectangle(context, bounds.x, bounds.y, bounds.width, bounds.height);
  cairo_clip(context);
  cairo_push_group(context);
  setSource(context, {color.red, color.green, color.blue, 1});
  draw();
  cairo_pop_group_to_source(context);
  cairo_paint_with_alpha(context, color.alpha);
}

/// Draws what lies in `bounds` displaced in the etch colour, then in the text colour. A theme may
/// ask for any offset; an etch that would lie beyond every picture, or nowhere, is left out.
template <typename Draw>
void drawEtched(cairo_t* context, const TextStyle& style, double scale, const Rect& bounds,
                Draw draw) {
  const Point offset{std::round(style.etch_offset_pt.x * scale),
                     std::round(style.etch_offset_pt.y * scale)};
  const bool is_near = std::fabs(offset.x) <= kMaxSide && std::fabs(offset.y) <= kMaxSide;
  if (style.etch_color && style.etch_color->alpha > 0 && is_near) {
    drawIn(context, *style.etch_color, around(moved(bounds, offset)), [&] { draw(offset); });
  }
  drawIn(context, style.color, around(bounds), [&] { draw(Point{}); });
}

bool isSmallLetter(std::string_view text) {
  return text.size() == 1 && text[0] >= 'a' && text[0] <= 'z';
}

/// How far below an area's middle the baseline of `text` lies, in ems. Words and capitals are
/// centred by the height of a capital, so that all words of a row stand on one line. A lone small
/// letter would look low that way, and by its own height high.
double baselineDrop(std::string_view text, const Face& face) {
  if (isSmallLetter(text)) return (face.capHeight() + face.xHeight()) / 4;
  return face.capHeight() / 2;
}

SetText setToFit(std::string_view text, const Face* face, double size_px, double width,
                 Fonts& fonts) {
  SetText set = setText(text, face, size_px, fonts);
  if (set.ink.width <= width || width <= 0) return set;
  return setText(text, face, size_px * width / set.ink.width, fonts);
}

void drawText(cairo_t* context, std::string_view text, const TextStyle& style, const Rect& area,
              double scale, Fonts& fonts) {
  constexpr double kPadding = 2;
  const Face* face = fonts.named(style.font_name);
  if (!face) return;
  const double size_px = style.size_pt * scale;
  const SetText set = setToFit(text, face, size_px, area.width - 2 * kPadding * scale, fonts);
  const Point center = centerOf(area);
  const double x = center.x - (set.ink.x + set.ink.right()) / 2;
  // A text set smaller stays on the line of its row.
  const double y = std::round(center.y + baselineDrop(text, *face) * size_px);
  drawEtched(context, style, scale, moved(set.ink, {x, y}),
             [&](Point offset) { showText(context, set, x + offset.x, y + offset.y); });
}

/// How high `symbol` stands above its line, in whole pixels: a capital of its font, a glyph an em.
double heightOf(const Symbol& symbol, double scale, Fonts& fonts) {
  const double em_px = symbol.style.size_pt * scale;
  if (std::holds_alternative<Glyph>(symbol.mark)) return std::round(em_px);
  const Face* face = fonts.named(symbol.style.font_name);
  return std::round(face ? face->capHeight() * em_px : em_px);
}

}  // namespace

void drawSymbol(cairo_t* context, const Symbol& symbol, const Rect& area, double scale,
                Fonts& fonts) {
  const TextStyle& style = symbol.style;
  if (const auto* text = std::get_if<std::string>(&symbol.mark)) {
    drawText(context, *text, style, area, scale, fonts);
    return;
  }
  const Glyph glyph = std::get<Glyph>(symbol.mark);
  const Point center = centerOf(area);
  const double em_px = style.size_pt * scale;
  // No glyph reaches as far as an em from its centre.
  const Rect bounds{center.x - em_px, center.y - em_px, 2 * em_px, 2 * em_px};
  drawEtched(context, style, scale, bounds, [&](Point offset) {
    drawGlyph(context, glyph, {center.x + offset.x, center.y + offset.y}, em_px);
  });
}

void drawPair(cairo_t* context, const Symbol& upper, const Symbol& lower, const Rect& area,
              double scale, Fonts& fonts) {
  constexpr double kGap = 0.08;  // of the lower one's em
  const double upper_height = heightOf(upper, scale, fonts);
  const double lower_height = heightOf(lower, scale, fonts);
  const double gap = std::round(kGap * lower.style.size_pt * scale);
  const double top = std::round(area.y + (area.height - upper_height - gap - lower_height) / 2);
  drawSymbol(context, upper, {area.x, top, area.width, upper_height}, scale, fonts);
  drawSymbol(context, lower, {area.x, top + upper_height + gap, area.width, lower_height}, scale,
             fonts);
}

}  // namespace host::drawing
