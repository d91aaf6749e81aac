#include "host/plist/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "host/plist/white_space.h"

namespace host::plist {

namespace {

// The decimal exponents that are written without one. Seventeen digits are as many as a double
// can need, so within them no zero is made up.
constexpr int kLeastFixedExponent = -4;
constexpr int kEndOfFixedExponents = 17;

/// Takes a sign off the front of `text`; whether it was a minus.
bool takeSign(std::string_view& text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  return negative;
}

/// The number that is all of `text`. A sign is none of its business.
template <class Number, class Base>
std::optional<Number> parseWhole(std::string_view text, Base base) {
  if (text.starts_with('-')) return std::nullopt;
  Number number{};
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, base);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

/// Appends the number whose digits are `digits`, the first of them worth ten to the `exponent`.
void appendFixed(std::string& text, std::string_view digits, int exponent) {
  if (exponent < 0) {
    text += "0.";
    text.append(static_cast<std::size_t>(-exponent - 1), '0').append(digits);
    return;
  }
  const auto whole = static_cast<std::size_t>(exponent) + 1;
  text += digits.substr(0, whole);
  if (digits.size() > whole) {
    text.append(".").append(digits.substr(whole));
  } else {
    text.append(whole - digits.size(), '0');
  }
}

}  // namespace

std::optional<std::int64_t> parseInteger(std::string_view text) {
  text = trimmed(text);
  const bool negative = takeSign(text);
  const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (hexadecimal) text.remove_prefix(2);
  const auto magnitude = parseWhole<std::uint64_t>(text, hexadecimal ? 16 : 10);
  constexpr std::uint64_t kMost = std::numeric_limits<std::int64_t>::max();
  if (!magnitude || *magnitude > kMost + (negative ? 1 : 0)) return std::nullopt;
  return static_cast<std::int64_t>(negative ? 0 - *magnitude : *magnitude);
}

std::optional<double> parseReal(std::string_view text) {
  text = trimmed(text);
  const bool negative = takeSign(text);
  const auto magnitude = parseWhole<double>(text, std::chars_format::general);
  if (!magnitude || !std::isfinite(*magnitude)) return std::nullopt;
  return negative ? -*magnitude : *magnitude;
}

void appendInteger(std::string& text, std::int64_t value) {
  text += std::to_string(value);
}

void appendReal(std::string& text, double value) {
  std::array<char, 32> buffer;
  const char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                  std::chars_format::scientific)
                        .ptr;
  const std::string_view number(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  if (std::signbit(value)) text += '-';

  const auto mark = number.find('e');
  int exponent = kEndOfFixedExponents;
  if (mark != number.npos) {
    const std::size_t plus = number[mark + 1] == '+' ? 1 : 0;
    std::from_chars(number.data() + mark + 1 + plus, end, exponent);
  }
  if (exponent < kLeastFixedExponent || exponent >= kEndOfFixedExponents) {
    text += number;
    return;
  }
  std::string digits(number.substr(0, mark));
  std::erase(digits, '.');
  appendFixed(text, digits, exponent);
}

}  // namespace host::plist
