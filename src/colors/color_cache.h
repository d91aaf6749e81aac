#pragma once

#include <optional>
#include <string_view>

#include "platform/graphics.h"
#include "platform/property_list.h"
#include "support/string_map.h"

namespace prismal {

/// The theme's colours by name. The cache holds the only lasting reference to each.
using ColorCache = StringMap<platform::Retained<platform::CGColorRef>>;

/// The one place that holds the named-colour cache; none before the first theme with colours.
std::optional<ColorCache>& PMGetColorCache();

/// Replaces the cache by the colours of `section`, the theme's "CustomColor": an array of pairs of
/// a name and a colour string. The first definition of a name wins. What is malformed is logged
/// and left out.
void PMRebuildColorCache(platform::PropertyListView section);

/// The theme's colour of that name, valid until the next rebuild; null when there is none.
platform::CGColorRef PMGetNamedColor(std::string_view name);

}  // namespace prismal
