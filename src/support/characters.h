#pragma once

// Characters as the platform counts and sorts them, in UTF-8 text.

#include <cstddef>
#include <string_view>

namespace prismal {

/// One character of `text` (UTF-8, well formed) at its start, and how many bytes it takes.
struct Character {
  char32_t codePoint = 0;
  std::size_t length = 0;
};

constexpr Character firstCharacter(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (text.empty()) return {};
  const unsigned lead = byte(0);
  const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (length == 1 || length > text.size()) return {lead, 1};
  char32_t codePoint = lead & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) codePoint = codePoint << 6U | (byte(i) & 0x3FU);
  return {codePoint, length};
}

/// How many characters the platform counts for one code point: UTF-16 units.
constexpr std::size_t unitsOf(char32_t codePoint) {
  return codePoint < 0x10000 ? 1 : 2;
}

/// `text` without its first `count` characters; empty when it has no more.
constexpr std::string_view withoutFirstCharacters(std::string_view text, std::size_t count) {
  // The names of a system are of one byte a character.
  std::size_t dropped = 0;
  const auto isOneByte = [&] { return static_cast<unsigned char>(text[dropped]) < 0x80; };
  while (dropped < count && dropped < text.size() && isOneByte()) ++dropped;
  text.remove_prefix(dropped);
  while (dropped < count && !text.empty()) {
    const Character first = firstCharacter(text);
    text.remove_prefix(first.length);
    dropped += unitsOf(first.codePoint);
  }
  return text;
}

/// Of the letters A to Z alone.
constexpr char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// White space and line breaks, in every script.
constexpr bool isWhiteSpace(char32_t c) {
  return (c >= 0x09 && c <= 0x0D) || c == 0x20 || c == 0x85 || c == 0xA0 || c == 0x1680 ||
         (c >= 0x2000 && c <= 0x200B) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F ||
         c == 0x3000;
}

constexpr std::string_view withoutLeadingWhiteSpace(std::string_view text) {
  while (!text.empty()) {
    const Character first = firstCharacter(text);
    if (!isWhiteSpace(first.codePoint)) break;
    text.remove_prefix(first.length);
  }
  return text;
}

constexpr std::string_view trimmed(std::string_view text) {
  text = withoutLeadingWhiteSpace(text);
  while (!text.empty()) {
    std::size_t last = text.size() - 1;
    while (last > 0 && (static_cast<unsigned char>(text[last]) & 0xC0U) == 0x80U) --last;
    if (!isWhiteSpace(firstCharacter(text.substr(last)).codePoint)) break;
    text = text.substr(0, last);
  }
  return text;
}

}  // namespace prismal
