#include "colors/color_string.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <span>

#include "support/characters.h"

namespace prismal {

namespace {

constexpr std::size_t kDigits = 8;

/// A letter that is several in upper case, which changes how long a text is.
struct Expansion {
  char32_t letter;
  std::u16string_view upperCase;
};

// Those of the Latin script. Colour strings are measured in upper case, and some of these letters
// turn into digits.
constexpr Expansion kExpansions[] = {
    {U'\u00DF', u"SS"},      {U'\u0149', u"\u02BCN"}, {U'\u01F0', u"J\u030C"},
    {U'\u1E96', u"H\u0331"}, {U'\u1E97', u"T\u0308"}, {U'\u1E98', u"W\u030A"},
    {U'\u1E99', u"Y\u030A"}, {U'\u1E9A', u"A\u02BE"}, {U'\uFB00', u"FF"},
    {U'\uFB01', u"FI"},      {U'\uFB02', u"FL"},      {U'\uFB03', u"FFI"},
    {U'\uFB04', u"FFL"},     {U'\uFB05', u"ST"},      {U'\uFB06', u"ST"},
};

/// The upper-case UTF-16 units of a text that may be a colour, in which the platform counts
/// characters. Digits keep their case: both are read alike.
class Units {
 public:
  /// Appends one letter; false when there are then more units than a colour string has.
  bool appendLetter(char32_t letter) {
    if (letter < kExpansions[0].letter) return append(letter);
    const auto* const found = std::ranges::find(kExpansions, letter, &Expansion::letter);
    if (found != std::end(kExpansions)) {
      return std::ranges::all_of(found->upperCase, [this](char16_t unit) { return append(unit); });
    }
    if (unitsOf(letter) == 1) return append(letter);
    const char32_t offset = letter - 0x10000;
    return append(0xD800 + (offset >> 10U)) && append(0xDC00 + (offset & 0x3FFU));
  }
  std::span<const char16_t> values() const { return std::span(values_).first(count_); }

 private:
  bool append(char32_t unit) {
    if (count_ == values_.size()) return false;
    values_[count_++] = static_cast<char16_t>(unit);
    return true;
  }

  std::array<char16_t, kDigits + 1> values_{};
  std::size_t count_ = 0;
};

std::optional<Units> toUnits(std::string_view text) {
  Units units;
  while (!text.empty()) {
    const Character next = firstCharacter(text);
    text.remove_prefix(next.length);
    if (!units.appendLetter(next.codePoint)) return std::nullopt;
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
  if (!units || units->values().size() < kDigits) return std::nullopt;
  std::span<const char16_t> digits = units->values();
  if (digits.front() == u'#') digits = digits.subspan(1);
  if (digits.size() != kDigits) return std::nullopt;
  const auto pair = [&](std::size_t i) { return scanPair(digits.subspan(2 * i).first<2>()); };
  return Rgba{pair(0), pair(1), pair(2), pair(3)};
}

}  // namespace prismal
