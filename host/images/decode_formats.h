#pragma once

// The formats behind decode.h; each takes a file that begins as its format does.

#include <cstdint>
#include <string_view>

#include "host/images/decode.h"
#include "host/images/limits.h"

namespace host::images {

DecodeResult decodePng(std::string_view file, std::uint64_t maxPixels);
DecodeResult decodeJpeg(std::string_view file, std::uint64_t maxPixels);

/// `pixels` are those that were looked at.
inline DecodeResult noPicture(std::string reason, std::uint64_t pixels = 0) {
  return {std::nullopt, std::move(reason), pixels};
}

/// Why a picture of these sides is not decoded; null when it is.
constexpr const char* refusalOf(std::uint32_t width, std::uint32_t height,
                                std::uint64_t maxPixels) {
  const std::uint64_t pixels = std::uint64_t{width} * height;
  if (pixels == 0 || width > kMaxSide || height > kMaxSide || pixels > kMaxPixels) {
    return "Too large";
  }
  return pixels > maxPixels ? "Too large beside the other pictures" : nullptr;
}

}  // namespace host::images
