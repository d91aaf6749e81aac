#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/images/bitmap.h"

namespace host::images {

// What a picture may measure, in pixels. Checked before any of them is decoded.
inline constexpr std::uint32_t kMaxSide = 32767;
inline constexpr std::uint64_t kMaxPixels = 64'000'000;

/// A bitmap, or why there is none.
struct DecodeResult {
  std::optional<Bitmap> bitmap;
  std::string reason;  // empty when there is a bitmap

  explicit operator bool() const { return bitmap.has_value(); }
};

/// The picture in a PNG or JPEG file, told apart by its first bytes; colours are taken as they are,
/// without colour management. A file that is broken, cut short or too large is no picture; bytes
/// after its end don't matter. Any thread; writes nothing anywhere.
DecodeResult decode(std::string_view file);
DecodeResult decode(std::span<const std::byte> file);

}  // namespace host::images
