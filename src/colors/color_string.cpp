#include "colors/color_string.h"

#include <array>
#include <cstddef>
#include <span>

#include "support/characters.h"

namespace prismal {

namespace {

constexpr std::size_t kDigits = 8;

/// The UTF-16 units of a text that may be a colour: the platform counts characters in them.
struct Units {
  std::array<char16_t, kDigits + 1> values{};
  std::size_t count = 0;
};

/// None when there are more units than a colour string has.
std::optional<Units> toUnits(std::string_view text) {
  Units units;
  const auto append = [&units](char32_t unit) {
    if (units.count == units.values.size()) return false;
    units.values[units.count++] = static_cast<char16_t>(unit);
    return true;
  };
  while (!text.empty()) {
    const Character next = firstCharacter(text);
    text.remove_prefix(next.length);
    if (unitsOf(next.codePoint) == 1) {
      if (!append(next.codePoint)) return std::nullopt;
    } else {
      const char32_t offset = next.codePoint - 0x10000;
      if (!append(0xD800 + (offset >> 10U)) || !append(0xDC00 + (offset & 0x3FFU))) {
        return std::nullopt;
      }
    }
  }
  return units;
}

std::optional<unsigned> hexadecimalDigit(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'A' && c <= u'F') return c - u'A' + 10U;
  if (c >= u'a' && c <= u'f') return c - u'a' + 10U;
  return std::nullopt;
}

/// The number at the start of a pair, as a scanner reads it: over white space, up to the first
/// character that is no digit. 0 when there is none.
std::uint8_t scanPair(std::span<const char16_t, 2> pair) {
  unsigned value = 0;
  std::size_t i = 0;
  while (i < pair.size() && isWhiteSpace(pair[i])) ++i;
  for (; i < pair.size(); ++i) {
    const auto digit = hexadecimalDigit(pair[i]);
    if (!digit) break;
    value = value * 16 + *digit;
  }
  return static_cast<std::uint8_t>(value);
}

}  // namespace

std::optional<Rgba> parseColorString(std::string_view text) {
  const auto units = toUnits(trimmed(text));
  if (!units || units->count < kDigits) return std::nullopt;
  std::span<const char16_t> digits(units->values.data(), units->count);
  if (digits.front() == u'#') digits = digits.subspan(1);
  if (digits.size() != kDigits) return std::nullopt;
  const auto pair = [&](std::size_t i) { return scanPair(digits.subspan(2 * i).first<2>()); };
  return Rgba{pair(0), pair(1), pair(2), pair(3)};
}

}  // namespace prismal
