#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host::plist {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

/// The character at the start of a text and how many bytes it takes.
struct Utf8Character {
  char32_t codePoint = 0;
  std::size_t length = 0;
  bool valid = false;
};

/// The first character of `text`, which must not be empty. What is no UTF-8 (overlong forms,
/// surrogates and numbers past U+10FFFF included) is one replacement character a byte, not valid.
Utf8Character firstUtf8Character(std::string_view text);

/// The offset of the first byte of `text` that is no UTF-8; npos when all of it is.
std::size_t findInvalidUtf8(std::string_view text);

/// Whether no byte of `text` is above 0x7F.
bool isAscii(std::string_view text);

/// Appends `codePoint`, at most U+10FFFF and no surrogate.
void appendUtf8(std::string& text, char32_t codePoint);

}  // namespace host::plist
