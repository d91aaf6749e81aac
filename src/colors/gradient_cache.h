#pragma once

#include <optional>
#include <string_view>

#include "platform/keyboard.h"
#include "platform/property_list.h"
#include "support/string_map.h"

namespace prismal {

/// The theme's gradients by name.
using LinearGradientCache = StringMap<platform::Retained<platform::UIKBGradient>>;

/// The one place that holds the gradient cache; none before the first theme with gradients.
std::optional<LinearGradientCache>& PMGetLinearGradientCache();

/// Replaces the cache by the gradients of `section`, the theme's "CustomLinearGradient": an array
/// of a name and one colour name (flat) or two (start and end). The last definition of a name
/// wins. What is malformed is logged and left out.
void PMRebuildLinearGradientCache(platform::PropertyListView section);

/// The theme's gradient of that name, valid until the next rebuild; null when there is none.
platform::UIKBGradient PMGetNamedGradient(std::string_view name);

}  // namespace prismal
