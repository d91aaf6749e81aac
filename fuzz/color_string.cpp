// Colour strings. Bytes that are no UTF-8, which no property list can hold, need only be survived.

#include "colors/color_string.h"

#include <array>
#include <cstdio>
#include <string>

#include "host/plist/utf8.h"
#include "support/require.h"
#include "support/target.h"

namespace {

std::string canonical(const prismal::Rgba& color) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "#%02X%02x%02X%02x", unsigned{color.red},
                unsigned{color.green}, unsigned{color.blue}, unsigned{color.alpha});
  return text.data();
}

/// What a text means does not depend on the white space around it.
void requireTrimmed(std::string_view text, const std::optional<prismal::Rgba>& color) {
  constexpr std::string_view kSpaces[] = {" ", "\t\n\r\v\f", "\u00A0\u2003\u3000", "\u200B\u2029"};
  for (const std::string_view space : kSpaces) {
    const std::string spaced = std::string(space).append(text).append(space);
    fuzz::require(prismal::parseColorString(spaced) == color, "white space around means nothing",
                  spaced);
  }
}

}  // namespace

int LLVMFuzzerInitialize(int*, char***) {
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text = fuzz::textOf(bytes, size);
  const auto color = prismal::parseColorString(text);
  if (host::plist::findInvalidUtf8(text) != text.npos) return 0;
  requireTrimmed(text, color);
  if (!color) return 0;
  fuzz::require(prismal::parseColorString(canonical(*color)) == color, "written out it is the same",
                text);
  fuzz::require(prismal::parseColorString(canonical(*color).substr(1)) == color,
                "the # may be left out", text);
  return 0;
}
