#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/keyboard.h"
#include "platform/property_list.h"

namespace prismal {

/// What a property changes. Of several that change one part, the last stands.
enum class StylePart : std::uint8_t {
  kBackground,
  kTextColor,
  kEtchColor,
  kSecondaryTextColor,
  kEtchOffsetX,
  kEtchOffsetY,
  kFontName,
};

/// One property that a style dictionary sets.
struct StyleSetting {
  std::string_view property;  ///< lives for ever
  StylePart part;
  platform::PropertyListView value;  ///< lives as long as the style
};

/// What applyStyle sets, in its order.
std::vector<StyleSetting> styleSettings(platform::PropertyListView style);

/// Sets on `traits` what the style dictionary says, property by property in their fixed order. An
/// entry of another type than its property has, or of no property, is passed over.
void applyStyle(platform::PropertyListView style, platform::UIKBRenderTraits traits);

}  // namespace prismal
