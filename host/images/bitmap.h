#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace host::images {

/// A pixel: 0xAARRGGBB in the machine's byte order, colours multiplied by alpha.
using Pixel = std::uint32_t;

/// A picture in memory, in the form that the drawing library takes without a copy: rows from the
/// top, `width` pixels each, nothing between them.
struct Bitmap {
  int width = 0;
  int height = 0;
  /// Whether every pixel's alpha is 255.
  bool opaque = false;
  std::vector<Pixel> pixels;

  bool operator==(const Bitmap&) const = default;

  Pixel at(int x, int y) const { return pixels[index(x, y)]; }
  const Pixel* row(int y) const { return pixels.data() + index(0, y); }
  Pixel* row(int y) { return pixels.data() + index(0, y); }
  /// Whether there are pixels, as many as the sides say.
  bool isValid() const { return width > 0 && height > 0 && pixels.size() == index(0, height); }

 private:
  std::size_t index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x);
  }
};

/// `color` times `alpha`, 255 being one, to the nearest.
constexpr Pixel premultiplied(Pixel color, Pixel alpha) {
  return (color * alpha + 127) / 255;
}

/// What premultiplied(color, alpha) was made from, to the nearest; 0 for an alpha of 0.
/// Premultiplied again it is `color`.
constexpr Pixel unpremultiplied(Pixel color, Pixel alpha) {
  if (alpha == 0) return 0;
  const Pixel value = (color * 255 + alpha / 2) / alpha;
  return value < 255 ? value : 255;
}

/// The pixel of a colour that isn't premultiplied, each part 0 to 255.
constexpr Pixel pixelOf(Pixel red, Pixel green, Pixel blue, Pixel alpha) {
  // Most pixels are opaque, and need no multiplication.
  if (alpha == 255) return alpha << 24 | red << 16 | green << 8 | blue;
  return alpha << 24 | premultiplied(red, alpha) << 16 | premultiplied(green, alpha) << 8 |
         premultiplied(blue, alpha);
}

/// A bitmap of one colour, not premultiplied. Invalid when a side isn't positive.
Bitmap solid(int width, int height, std::uint8_t red, std::uint8_t green, std::uint8_t blue,
             std::uint8_t alpha);

}  // namespace host::images
