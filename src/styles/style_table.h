#pragma once

#include <string_view>

#include "platform/property_list.h"

namespace prismal {

/// The theme's rule list for a visual style, of whatever type it is; null when there is none. Split
/// keyplanes take the rules of tablets, and tablets without any those of phones; alerts fall back
/// to nothing. The first call in the process captures the theme's rules for good.
platform::PropertyListView PMGetStyles(std::string_view visualStyleName);

}  // namespace prismal
