#include "settings/theme_data.h"

#include <string_view>

#include "colors/color_cache.h"
#include "colors/gradient_cache.h"
#include "platform/foundation.h"
#include "settings/settings_store.h"
#include "support/process_lifetime.h"

namespace prismal {

using platform::PropertyList;

namespace {

constexpr std::string_view kThemeFile =
    "/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist";

constinit ProcessLifetime<PropertyList> theme;

PropertyList readTheme() {
  PropertyList read = PropertyList::dictionaryWithContentsOfFile(kThemeFile);
  if (!read) {
    platform::NSLog("PM: Failed to load theme data: %@", {kThemeFile});
    return PropertyList::dictionary();
  }
  platform::NSLog("PM: InitColorCache: %p", {static_cast<const void*>(read.get())});
  // Colours first: gradients are made of colour names.
  if (const auto section = read.objectForKey("CustomColor")) PMRebuildColorCache(section);
  if (const auto section = read.objectForKey("CustomLinearGradient")) {
    PMRebuildLinearGradientCache(section);
  }
  return read;
}

}  // namespace

const PropertyList& PMGetThemeData() {
  if (*theme && !_themeReloadRequested) return *theme;
  *theme = PropertyList();
  *theme = readTheme();
  return *theme;
}

}  // namespace prismal
