#pragma once

// The formats behind decode.h; each takes a file that begins as its format does.

#include <string_view>

#include "host/images/decode.h"

namespace host::images {

DecodeResult decodePng(std::string_view file);
DecodeResult decodeJpeg(std::string_view file);

inline DecodeResult noPicture(std::string reason) {
  return {std::nullopt, std::move(reason)};
}

constexpr bool fits(std::uint32_t width, std::uint32_t height) {
  return width > 0 && height > 0 && width <= kMaxSide && height <= kMaxSide &&
         std::uint64_t{width} * height <= kMaxPixels;
}

}  // namespace host::images
