#pragma once

// Themes of any size, always the same for the same size.

#include <cstddef>
#include <string>
#include <vector>

#include "platform/property_list.h"

namespace bench {

/// The name of the colour numbered `i`, as people name colours: 8 to 30 bytes.
std::string colorName(std::size_t i);

/// A "CustomColor" section of `count` colours.
platform::PropertyList colorSection(std::size_t count);

/// A "CustomLinearGradient" section of `count` gradients, each of two colours.
platform::PropertyList gradientSection(std::size_t count);

/// The name of the gradient numbered `i`.
std::string gradientName(std::size_t i);

/// The conditions of `count` rules, as themes have them: names, types, rows and states, alone and
/// together. One in twenty holds for the sample key.
std::vector<std::string> conditions(std::size_t count);

/// A rule list of those conditions. Each sets a gradient and two colours.
platform::PropertyList ruleList(std::size_t count);

/// A "BackgroundImages" section of `count` pictures, all at `path`.
platform::PropertyList imageSection(std::size_t count, const std::string& path);

}  // namespace bench
