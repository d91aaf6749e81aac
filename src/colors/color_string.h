#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace prismal {

/// A colour as a theme writes it, one byte a channel.
struct Rgba {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  std::uint8_t alpha = 0;
  friend constexpr bool operator==(const Rgba&, const Rgba&) = default;
};

/// The colour that `text` (UTF-8) spells: eight hexadecimal digits, red, green, blue, alpha, behind
/// an optional "#", with white space around them. None when the length is another; the characters
/// themselves are not tested, and a pair that does not begin with a digit is 0.
std::optional<Rgba> parseColorString(std::string_view text);

}  // namespace prismal
