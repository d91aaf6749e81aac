#pragma once

// How JSON holds what it has no type for: an object with one member, whose name says what the value
// is. A dictionary whose one key looks like such a name has one more $ in front of it.

#include <string_view>

namespace tools::convert {

inline constexpr std::string_view kDataMember = "$data";  ///< base64
inline constexpr std::string_view kDateMember = "$date";  ///< exact_date.h

/// Whether `key`, alone in a dictionary, needs one more $ in JSON, and one less on the way back
/// once it is neither of the names above itself.
constexpr bool looksLikeNotation(std::string_view key) {
  while (key.starts_with("$$")) key.remove_prefix(1);
  return key == kDataMember || key == kDateMember;
}

static_assert(looksLikeNotation("$data") && looksLikeNotation("$$$date"));
static_assert(!looksLikeNotation("data") && !looksLikeNotation("$") &&
              !looksLikeNotation("$Data") && !looksLikeNotation("$dat") && !looksLikeNotation("") &&
              !looksLikeNotation("$x$data"));

}  // namespace tools::convert
