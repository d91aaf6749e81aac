#pragma once

// A theme while it is checked, and the one function for each of its sections. They add to what the
// later ones know, and are called in this order.

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "check/finding.h"
#include "check/source.h"

namespace tools::check {

/// What a theme defines, by name: where the definition that counts stands.
using Definitions = std::map<std::string, Place, std::less<>>;

struct Theme {
  const Source& source;
  Findings& findings;
  Definitions colors = {};
  Definitions gradients = {};
  /// Names that the theme tries to define. What is wrong there has been told.
  std::set<std::string, std::less<>> tried = {};

  platform::PropertyListView section(std::string_view name) const {
    return source.list().objectForKey(name);
  }
};

inline constexpr std::string_view kColors = "CustomColor";
inline constexpr std::string_view kGradients = "CustomLinearGradient";
inline constexpr std::string_view kStyles = "Styles";
inline constexpr std::string_view kImages = "BackgroundImages";

/// What is at the root, and the types of the sections.
void checkSections(Theme& theme);
void checkColors(Theme& theme);
void checkGradients(Theme& theme);

/// A name at `place`, an item or a property of `what` ("TextColor"), that should be that of a
/// colour or of a gradient.
void checkColorName(Theme& theme, const Place& place, std::string_view what, std::string_view name);
void checkGradientName(Theme& theme, const Place& place, std::string_view what,
                       std::string_view name);

}  // namespace tools::check
