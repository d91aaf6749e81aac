#pragma once

#include <string_view>

#include "platform/property_list.h"

namespace prismal {

/// The rule list of one visual style.
struct StyleList {
  std::string_view
      name;  ///< the visual style under which it stands; lives as long as the one asked for
  platform::PropertyListView rules;  ///< of whatever type; null when there is none
};

/// The list in `styles`, a theme's "Styles", for a visual style. Split keyplanes take the rules of
/// tablets, and tablets without any those of phones; alerts fall back to nothing.
StyleList styleListFor(platform::PropertyListView styles, std::string_view visualStyleName);

/// The theme's rule list for a visual style, as styleListFor finds it. The first call in the
/// process captures the theme's rules for good.
platform::PropertyListView PMGetStyles(std::string_view visualStyleName);

}  // namespace prismal
