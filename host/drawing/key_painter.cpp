#include "host/drawing/key_painter.h"

#include "host/drawing/cairo_handles.h"
#include "host/drawing/label.h"
#include "host/drawing/pixels.h"
#include "host/drawing/shapes.h"

namespace host::drawing {
namespace {

/// What shows of the edge below the face. None of it lies under the face, which may be translucent.
void drawEdge(cairo_t* context, const EdgeEffect& edge, const Rect& face, double radius,
              double scale) {
  const SavedState saved(context);
  clipOut(context, face, radius);
  setSource(context, edge.color);
  addRoundedRect(context, moved(face, {0, toLineWidth(edge.depth_pt, scale)}), radius);
  cairo_fill(context);
}

void drawSymbols(cairo_t* context, const KeyPicture& key, const Rect& face, double scale,
                 Fonts& fonts) {
  if (key.symbol && key.secondary_symbol) {
    drawPair(context, *key.secondary_symbol, *key.symbol, face, scale, fonts);
  } else if (const auto& only = key.symbol ? key.symbol : key.secondary_symbol) {
    drawSymbol(context, *only, face, scale, fonts);
  }
}

}  // namespace

void drawKey(cairo_t* context, const KeyPicture& key, double scale, Fonts& fonts) {
  const Rect face = toPixels(key.frame, scale);
  if (!isDrawable(face)) return;
  const double radius = key.corner_radius_pt * scale;
  if (key.edge) drawEdge(context, *key.edge, face, radius, scale);
  if (key.background) {
    addRoundedRect(context, face, radius);
    fillPath(context, *key.background, face);
  }
  drawSymbols(context, key, face, scale, fonts);
}

}  // namespace host::drawing
