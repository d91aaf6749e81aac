#pragma once

#include <string_view>

namespace host::plist {

/// What counts as white space between elements and around numbers; a script's own spaces do not.
inline constexpr std::string_view kWhiteSpace = " \t\r\n";

constexpr bool isWhiteSpace(char c) {
  return kWhiteSpace.find(c) != kWhiteSpace.npos;
}

constexpr std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(kWhiteSpace);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

}  // namespace host::plist
