#include "host/drawing/bitmap_surface.h"

#include <cmath>

#include "host/drawing/picture.h"

namespace host::drawing {
namespace {

bool isSide(double pixels) {
  return pixels >= 1 && pixels <= kMaxSide;
}

}  // namespace

std::optional<PixelSize> inPixels(Size size, double scale) {
  const double width = std::round(size.width * scale);
  const double height = std::round(size.height * scale);
  if (!isSide(width) || !isSide(height)) return std::nullopt;
  return PixelSize{static_cast<int>(width), static_cast<int>(height)};
}

Surface surfaceOn(const images::Bitmap& bitmap) {
  auto* pixels = const_cast<images::Pixel*>(bitmap.pixels.data());
  const cairo_format_t format = bitmap.opaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32;
  return Surface(cairo_image_surface_create_for_data(
      reinterpret_cast<unsigned char*>(pixels), format, bitmap.width, bitmap.height,
      bitmap.width * static_cast<int>(sizeof(images::Pixel))));
}

images::Bitmap clearBitmap(PixelSize size) {
  images::Bitmap bitmap;
  bitmap.width = size.width;
  bitmap.height = size.height;
  bitmap.pixels.resize(static_cast<std::size_t>(size.width) *
                       static_cast<std::size_t>(size.height));
  return bitmap;
}

}  // namespace host::drawing
