#pragma once

// The regular expressions of expectations.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tools::scenario {

/// Characters of a pattern, and of a text that a pattern with back references is held against: each
/// may take a step of recursion, and both fit the stack that they run on with room to spare.
inline constexpr std::size_t kMaxPatternLength = 10'000;
inline constexpr std::size_t kMaxBackReferenceTextLength = 10'000;

/// Why `pattern` (UTF-8) is no ECMAScript regular expression, none when it is one.
std::optional<std::string> patternFault(std::string_view pattern);

struct PatternMatch {
  bool matches = false;
  std::string fault;  ///< why it could not be tried; empty when it was
};

/// Whether the whole of `text` (UTF-8) matches `pattern`. A character is a code point. Takes time
/// that grows with the length of the text, not with the ways to match it, for a pattern without
/// back references.
PatternMatch matchWhole(std::string_view pattern, std::string_view text);

}  // namespace tools::scenario
