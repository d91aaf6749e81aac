#pragma once

#include <cstdint>
#include <string_view>

namespace prismal {

/// The interface orientation of the shared keyboard: 1 and 2 are portrait, 3 and 4 landscape. 1
/// when there is no keyboard, or none that tells.
std::int32_t keyboardOrientation();

constexpr bool isLandscape(std::int32_t orientation) {
  return orientation == 3 || orientation == 4;
}

/// The name under which themes file images of that orientation.
constexpr std::string_view orientationName(std::int32_t orientation) {
  return isLandscape(orientation) ? "Landscape" : "Portrait";
}

}  // namespace prismal
