#include "colors/color_cache.h"

#include <array>
#include <utility>

#include "colors/color_string.h"
#include "platform/foundation.h"
#include "platform/keyboard.h"
#include "support/process_lifetime.h"

namespace prismal {

using platform::CGColorRef;
using platform::PropertyListView;
using platform::Retained;

namespace {

/// Null when `value` is no colour string or the platform makes no colour of it.
Retained<CGColorRef> createColor(PropertyListView value) {
  const auto text = value.string();
  const auto parsed = text ? parseColorString(*text) : std::nullopt;
  if (!parsed) return {};
  const std::array<double, 4> components = {parsed->red / 255.0, parsed->green / 255.0,
                                            parsed->blue / 255.0, parsed->alpha / 255.0};
  return platform::CGColorCreate(platform::UIKBColorSpace(), components);
}

void addDefinition(ColorCache& cache, PropertyListView element) {
  const auto items = element.items();
  if (items.size() != 2) {
    platform::NSLog("PM: CustomColor Type ERROR: %@", {element});
    return;
  }
  Retained<CGColorRef> color = createColor(items[1]);
  if (!color) {
    platform::NSLog("PM: CustomColor String ERROR: %@", {element});
    return;
  }
  if (const auto name = items[0].string()) cache.insert(*name, std::move(color));
}

}  // namespace

std::optional<ColorCache>& PMGetColorCache() {
  static constinit ProcessLifetime<std::optional<ColorCache>> colorCache;
  return *colorCache;
}

void PMRebuildColorCache(PropertyListView section) {
  ColorCache& cache = PMGetColorCache().emplace();
  if (!section.isArray()) {
    platform::NSLog("PM: CustomColor is not NSArray.");
    return;
  }
  cache.reserve(section.items().size());
  for (const PropertyListView element : section.items()) addDefinition(cache, element);
}

CGColorRef PMGetNamedColor(std::string_view name) {
  const auto& cache = PMGetColorCache();
  if (!cache || cache->empty()) return {};
  const auto* const found = cache->find(name);
  return found ? found->get() : CGColorRef();
}

}  // namespace prismal
