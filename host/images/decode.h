#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/images/bitmap.h"
#include "host/images/limits.h"

namespace host::images {

/// A bitmap, or why there is none.
struct DecodeResult {
  std::optional<Bitmap> bitmap;
  std::string reason;  // empty when there is a bitmap
  /// What decoding has cost: as many pixels as the file says it has, once they were looked at.
  std::uint64_t pixels = 0;

  explicit operator bool() const { return bitmap.has_value(); }
};

/// The picture in a PNG or JPEG file, told apart by its first bytes; colours are taken as they are,
/// without colour management. A file that is broken, cut short or beyond limits.h is no picture;
/// bytes after its end don't matter. One of more than `maxPixels` is none either. Any thread;
/// writes nothing anywhere.
DecodeResult decode(std::string_view file, std::uint64_t maxPixels = kMaxPixels);
DecodeResult decode(std::span<const std::byte> file, std::uint64_t maxPixels = kMaxPixels);

}  // namespace host::images
