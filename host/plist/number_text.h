#pragma once

// Numbers as text, the same in every locale.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host::plist {

/// A decimal or, after 0x, hexadecimal integer with an optional sign, white space around it
/// allowed. None when it is none or does not fit.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// A decimal number with an optional sign, fraction and exponent, white space around it allowed.
/// None when it is none or lies outside what a double holds.
std::optional<double> parseReal(std::string_view text);

void appendInteger(std::string& text, std::int64_t value);

/// Appends the fewest digits that read back as `value`: without an exponent from 1e-4 up to but not
/// including 1e17, like 1e+20 otherwise. A whole number has no point.
void appendReal(std::string& text, double value);

}  // namespace host::plist
