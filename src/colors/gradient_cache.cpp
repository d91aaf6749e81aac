#include "colors/gradient_cache.h"

#include <span>

#include "hooks/class_references.h"
#include "platform/foundation.h"
#include "support/process_lifetime.h"

namespace prismal {

using platform::PropertyListView;
using platform::Retained;
using platform::UIKBGradient;

namespace {

/// The gradient that the items behind the name describe; null when they are malformed, which is
/// logged, or when the platform makes none of them, which is not.
UIKBGradient createGradient(std::span<const PropertyListView> colors) {
  const auto start = colors[0].string();
  if (colors.size() == 1) {
    if (start) return UIKBGradient::gradientWithFlatColor(classes.UIKBGradient, *start);
    platform::NSLog("PM: GradientColorName must be a string.: %@", {colors[0]});
    return {};
  }
  const auto end = colors[1].string();
  if (start && end) {
    return UIKBGradient::gradientWithStartColor(classes.UIKBGradient, *start, *end);
  }
  platform::NSLog("PM: CustomLinearGradient ColorName Type ERROR: %@ %@", {colors[0], colors[1]});
  return {};
}

void addDefinition(LinearGradientCache& cache, PropertyListView element) {
  const auto items = element.items();
  if (items.size() < 2) {
    platform::NSLog("PM: CustomLinearGradient ERROR: %@", {element});
    return;
  }
  const auto name = items[0].string();
  if (!name) {
    platform::NSLog("PM: GradientName must be a string.: %@", {items[0]});
    return;
  }
  if (const UIKBGradient gradient = createGradient(items.subspan(1))) {
    cache.assign(*name, Retained(gradient));
  }
}

}  // namespace

std::optional<LinearGradientCache>& PMGetLinearGradientCache() {
  static constinit ProcessLifetime<std::optional<LinearGradientCache>> gradientCache;
  return *gradientCache;
}

void PMRebuildLinearGradientCache(PropertyListView section) {
  LinearGradientCache& cache = PMGetLinearGradientCache().emplace();
  if (!section.isArray()) {
    platform::NSLog("PM: CustomLinearGradient is not NSArray.");
    return;
  }
  cache.reserve(section.items().size());
  // The gradients that a later definition replaces go at once, not when the keyboard is done.
  const platform::NSAutoreleasePool pool;
  for (const PropertyListView element : section.items()) addDefinition(cache, element);
}

UIKBGradient PMGetNamedGradient(std::string_view name) {
  const auto& cache = PMGetLinearGradientCache();
  if (!cache) return {};
  const auto* const found = cache->find(name);
  return found ? found->get() : UIKBGradient();
}

}  // namespace prismal
