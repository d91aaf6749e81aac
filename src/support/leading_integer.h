#pragma once

#include <limits>
#include <string_view>

#include "support/characters.h"

namespace prismal {

/// The decimal integer at the start of `text`, behind white space and a sign; 0 when there is none.
/// One too large stays at the limit, so that it never wraps round to a number that occurs.
constexpr int leadingInteger(std::string_view text) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  // What nearly every text here is.
  if (text.size() == 1 && isDigit(text.front())) return text.front() - '0';
  text = withoutLeadingWhiteSpace(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  constexpr int kLimit = std::numeric_limits<int>::max();
  int value = 0;
  for (const char c : text) {
    if (!isDigit(c)) break;
    const int digit = c - '0';
    value = value > (kLimit - digit) / 10 ? kLimit : value * 10 + digit;
  }
  return negative ? -value : value;
}

}  // namespace prismal
