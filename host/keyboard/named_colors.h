#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>

namespace host::keyboard {

/// Red, green, blue and alpha, each 0 to 1, by colour name.
using NamedColors = std::map<std::string, std::array<double, 4>, std::less<>>;

/// What the platform's own `UIKBGetNamedColor` knows; none puts the system look's colours back.
void setSystemColors(std::optional<NamedColors> colors);

}  // namespace host::keyboard
