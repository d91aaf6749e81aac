#include "host/plist/utf8.h"

#include <cstdint>
#include <cstring>

namespace host::plist {

namespace {

/// What a lead byte says: how long its character is and the least number worth that many bytes.
struct Lead {
  std::size_t length = 0;
  char32_t bits = 0;
  char32_t least = 0;
};

constexpr Lead leadOf(unsigned char byte) {
  if (byte < 0x80U) return {1, byte, 0};
  if (byte < 0xC0U) return {};
  if (byte < 0xE0U) return {2, byte & 0x1FU, 0x80};
  if (byte < 0xF0U) return {3, byte & 0x0FU, 0x800};
  if (byte < 0xF8U) return {4, byte & 0x07U, 0x10000};
  return {};
}

/// How many bytes at the start of `text` are ASCII, found eight at a time and so up to seven less.
std::size_t asciiWords(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::size_t length = 0;
  for (std::uint64_t word = 0; length + sizeof word <= text.size(); length += sizeof word) {
    std::memcpy(&word, text.data() + length, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  return length;
}

}  // namespace

Utf8Character firstUtf8Character(std::string_view text) {
  constexpr Utf8Character kInvalid = {kReplacementCharacter, 1, false};
  const Lead lead = leadOf(static_cast<unsigned char>(text.front()));
  if (lead.length == 0 || lead.length > text.size()) return kInvalid;
  char32_t codePoint = lead.bits;
  for (const char c : text.substr(1, lead.length - 1)) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0U) != 0x80U) return kInvalid;
    codePoint = codePoint << 6U | (byte & 0x3FU);
  }
  const bool surrogate = codePoint >= 0xD800 && codePoint < 0xE000;
  if (codePoint < lead.least || codePoint > 0x10FFFF || surrogate) return kInvalid;
  return {codePoint, lead.length, true};
}

std::size_t findInvalidUtf8(std::string_view text) {
  for (std::size_t offset = asciiWords(text); offset < text.size();) {
    const Utf8Character character = firstUtf8Character(text.substr(offset));
    if (!character.valid) return offset;
    offset += character.length;
    if (character.length == 1) offset += asciiWords(text.substr(offset));
  }
  return std::string_view::npos;
}

bool isAscii(std::string_view text) {
  for (const char c : text.substr(asciiWords(text))) {
    if (static_cast<unsigned char>(c) >= 0x80U) return false;
  }
  return true;
}

void appendUtf8(std::string& text, char32_t codePoint) {
  const auto append = [&](char32_t byte) { text += static_cast<char>(byte); };
  const auto continuation = [&](unsigned shift) { append(0x80U | (codePoint >> shift & 0x3FU)); };
  if (codePoint < 0x80) {
    append(codePoint);
  } else if (codePoint < 0x800) {
    append(0xC0U | codePoint >> 6U);
    continuation(0);
  } else if (codePoint < 0x10000) {
    append(0xE0U | codePoint >> 12U);
    continuation(6);
    continuation(0);
  } else {
    append(0xF0U | codePoint >> 18U);
    continuation(12);
    continuation(6);
    continuation(0);
  }
}

}  // namespace host::plist
