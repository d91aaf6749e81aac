#pragma once

#include <limits>
#include <string_view>

#include "support/characters.h"

namespace prismal {

/// The decimal integer at the start of `text`, behind white space and a sign; 0 when there is none.
/// One too large stays at the limit, so that it never wraps round to a number that occurs.
constexpr int leadingInteger(std::string_view text) {
  text = withoutLeadingWhiteSpace(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  constexpr int kLimit = std::numeric_limits<int>::max();
  int value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    const int digit = c - '0';
    value = value > (kLimit - digit) / 10 ? kLimit : value * 10 + digit;
  }
  return negative ? -value : value;
}

}  // namespace prismal
