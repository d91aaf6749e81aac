#include "host/drawing/draw.h"

#include <cmath>

#include "host/drawing/bitmap_surface.h"
#include "host/drawing/cairo_handles.h"
#include "host/drawing/key_painter.h"
#include "host/drawing/pixels.h"
#include "host/drawing/shapes.h"

namespace host::drawing {
namespace {

/// Cairo's own choice weighs every pixel of an image that it shrinks: 7 to 14 ms for a keyboard
/// where two by two pixels take half of one. Those pass nothing over while they shrink it to no
/// less than its half.
cairo_filter_t filterFor(const images::Bitmap& bitmap, const Rect& frame) {
  const double across = frame.width / bitmap.width;
  const double down = frame.height / bitmap.height;
  if (across == 1 && down == 1) return CAIRO_FILTER_NEAREST;
  return std::fmin(across, down) < 0.5 ? CAIRO_FILTER_GOOD : CAIRO_FILTER_BILINEAR;
}

void drawImage(cairo_t* context, const BackgroundImage& image, double scale) {
  const Rect frame = toPixels(image.frame, scale);
  if (!image.bitmap || !image.bitmap->isValid() || !isDrawable(frame)) return;
  const Surface surface = surfaceOn(*image.bitmap);
  const SavedState saved(context);
  cairo_rectangle(context, frame.x, frame.y, frame.width, frame.height);
  cairo_clip(context);
  cairo_translate(context, frame.x, frame.y);
  cairo_scale(context, frame.width / image.bitmap->width, frame.height / image.bitmap->height);
  cairo_set_source_surface(context, surface.get(), 0, 0);
  cairo_pattern_set_filter(cairo_get_source(context), filterFor(*image.bitmap, frame));
  // Without it the outermost pixels would mix with the nothing around the image.
  cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
  cairo_paint(context);
}

void fillRegion(cairo_t* context, const Fill& fill, const Rect& region) {
  if (!isDrawable(region)) return;
  cairo_rectangle(context, region.x, region.y, region.width, region.height);
  fillPath(context, fill, region);
}

void fillBackground(cairo_t* context, const Fill& fill, const KeyboardPicture& picture) {
  const double scale = picture.scale;
  if (picture.background_regions.empty()) {
    fillRegion(context, fill, toPixels({0, 0, picture.size.width, picture.size.height}, scale));
  }
  for (const Rect& region : picture.background_regions) {
    fillRegion(context, fill, toPixels(region, scale));
  }
}

void copyKey(cairo_t* context, const images::PlacedBitmap& key) {
  if (!key.bitmap.isValid()) return;
  const Surface surface = surfaceOn(key.bitmap);
  const SavedState saved(context);
  cairo_set_source_surface(context, surface.get(), key.left, key.top);
  cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_NEAREST);
  cairo_paint(context);
}

void drawAll(cairo_t* context, const KeyboardPicture& picture, Fonts& fonts) {
  const double scale = picture.scale;
  if (picture.background) fillBackground(context, *picture.background, picture);
  for (const BackgroundImage& image : picture.background_images) drawImage(context, image, scale);
  for (const KeyPicture& key : picture.keys) drawKey(context, key, scale, fonts);
  for (const auto& key : picture.drawn_keys) copyKey(context, *key);
}

/// Looks at every pixel whatever the first ones are: that way many are taken at once.
bool isOpaque(const images::Bitmap& bitmap) {
  images::Pixel common = ~images::Pixel{0};
  for (const images::Pixel pixel : bitmap.pixels) common &= pixel;
  return common >> 24 == 0xff;
}

}  // namespace

std::optional<images::Bitmap> draw(const KeyboardPicture& picture, Fonts& fonts) {
  const auto size = inPixels(picture.size, picture.scale);
  if (!size) return std::nullopt;
  images::Bitmap bitmap = clearBitmap(*size);
  const Surface surface = surfaceOn(bitmap);
  const Context context(cairo_create(surface.get()));
  drawAll(context.get(), picture, fonts);
  cairo_surface_flush(surface.get());
  if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) return std::nullopt;
  bitmap.opaque = isOpaque(bitmap);
  return bitmap;
}

}  // namespace host::drawing
