#include "host/images/bitmap.h"

namespace host::images {

Bitmap solid(int width, int height, std::uint8_t red, std::uint8_t green, std::uint8_t blue,
             std::uint8_t alpha) {
  if (width <= 0 || height <= 0) return {};
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  return {width, height, alpha == 255, std::vector<Pixel>(count, pixelOf(red, green, blue, alpha))};
}

}  // namespace host::images
