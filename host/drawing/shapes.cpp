#include "host/drawing/shapes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

#include "host/drawing/cairo_handles.h"

namespace host::drawing {
namespace {

std::uint32_t premultiplied(const Rgba& color) {
  const auto byte = [](double value) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
  };
  return byte(color.alpha) << 24 | byte(color.red * color.alpha) << 16 |
         byte(color.green * color.alpha) << 8 | byte(color.blue * color.alpha);
}

Rgba mix(const Rgba& from, const Rgba& to, double part) {
  return {std::lerp(from.red, to.red, part), std::lerp(from.green, to.green, part),
          std::lerp(from.blue, to.blue, part), std::lerp(from.alpha, to.alpha, part)};
}

/// The pixels of a strip of a gradient, in which all of a row are alike. Cairo's own gradient takes
/// its colours between the pixels' borders, so that neither end's colour would be seen.
std::vector<std::uint32_t> stripOf(const Fill& fill, int width, int height) {
  std::vector<std::uint32_t> pixels;
  pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int row = 0; row < height; ++row) {
    const double part = height > 1 ? row / (height - 1.0) : 0;
    pixels.insert(pixels.end(), static_cast<std::size_t>(width),
                  premultiplied(mix(fill.top, fill.bottom, part)));
  }
  return pixels;
}

}  // namespace

void setSource(cairo_t* context, const Rgba& color) {
  cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
}

void addRoundedRect(cairo_t* context, const Rect& rect, double radius) {
  constexpr double kQuarter = std::numbers::pi / 2;
  const double r = std::clamp(radius, 0.0, std::min(rect.width, rect.height) / 2);
  cairo_new_sub_path(context);
  cairo_arc(context, rect.right() - r, rect.y + r, r, -kQuarter, 0);
  cairo_arc(context, rect.right() - r, rect.bottom() - r, r, 0, kQuarter);
  cairo_arc(context, rect.x + r, rect.bottom() - r, r, kQuarter, 2 * kQuarter);
  cairo_arc(context, rect.x + r, rect.y + r, r, 2 * kQuarter, 3 * kQuarter);
  cairo_close_path(context);
}

void fillPath(cairo_t* context, const Fill& fill, const Rect& bounds) {
  const int height = static_cast<int>(bounds.height);
  if (fill.isFlat() || height < 1) {
    setSource(context, fill.top);
    cairo_fill(context);
    return;
  }
  // Repeated sideways, and wide enough for a key: cairo's library of pixels is quick only with what
  // it need not extend, or is at least this wide.
  constexpr int kMaxWidth = 64;
  const int width = std::clamp(static_cast<int>(bounds.width), 1, kMaxWidth);
  std::vector<std::uint32_t> pixels = stripOf(fill, width, height);
  const Surface strip(cairo_image_surface_create_for_data(
      reinterpret_cast<unsigned char*>(pixels.data()), CAIRO_FORMAT_ARGB32, width, height,
      width * static_cast<int>(sizeof(std::uint32_t))));
  cairo_set_source_surface(context, strip.get(), bounds.x, bounds.y);
  cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_NEAREST);
  cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_REPEAT);
  cairo_fill(context);
  // The pixels live no longer than this call.
  cairo_set_source_rgb(context, 0, 0, 0);
  cairo_surface_finish(strip.get());
}

void clipOut(cairo_t* context, const Rect& rect, double radius) {
  double left = 0, top = 0, right = 0, bottom = 0;
  cairo_clip_extents(context, &left, &top, &right, &bottom);
  cairo_new_path(context);
  cairo_rectangle(context, left, top, right - left, bottom - top);
  addRoundedRect(context, rect, radius);
  cairo_set_fill_rule(context, CAIRO_FILL_RULE_EVEN_ODD);
  cairo_clip(context);
  cairo_set_fill_rule(context, CAIRO_FILL_RULE_WINDING);
}

}  // namespace host::drawing
