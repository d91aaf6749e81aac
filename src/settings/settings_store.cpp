#include "settings/settings_store.h"

#include "support/no_throw.h"

namespace prismal {

using platform::PropertyList;
using platform::PropertyListView;

constinit ProcessLifetime<PropertyList> settings;
constinit bool _enabled = true;
constinit bool _themeReloadRequested = false;

namespace {

constexpr std::string_view kUserFile = "/var/mobile/Library/Preferences/net.quillon.prismal.plist";
constexpr std::string_view kDefaultFile =
    "/var/mobile/Library/Preferences/net.quillon.prismal.default.plist";

// Both names are spelled so by everybody who posts them.
constexpr std::string_view kReloadThemes = "net.quillon.prismal.relaodThemes";
constexpr std::string_view kReloadSettings = "net.quillon.prismal.relaodSettings";

constinit bool _settingsInitialized = false;

PropertyList readSettings() {
  for (const std::string_view file : {kUserFile, kDefaultFile}) {
    if (PropertyList read = PropertyList::dictionaryWithContentsOfFile(file)) return read;
  }
  return PropertyList::dictionary();
}

}  // namespace

void PMInitializeSettings() {
  if (_settingsInitialized) return;
  const auto center = platform::CFNotificationCenterGetDarwinNotifyCenter();
  platform::CFNotificationCenterAddObserver(center, nullptr, &PMReloadThemesCallback, kReloadThemes,
                                            nullptr);
  platform::CFNotificationCenterAddObserver(center, nullptr, &PMReloadSettingsCallback,
                                            kReloadSettings, nullptr);
  PMLoadSettings();
  _settingsInitialized = true;
}

void PMLoadSettings() {
  *settings = PropertyList();
  *settings = readSettings();
  const PropertyListView use = settings->objectForKey("usePrismal");
  _enabled = use.isNumber() ? use.boolValue() : true;
  platform::NSLog("PM: Enabled(%d)", {_enabled ? 1 : 0});
}

void PMReloadThemesCallback(platform::CFNotificationCenterRef, void*, std::string_view, const void*,
                            PropertyListView) {
  _themeReloadRequested = true;
}

void PMReloadSettingsCallback(platform::CFNotificationCenterRef, void*, std::string_view,
                              const void*, PropertyListView) {
  withoutThrowing(PMLoadSettings);
}

}  // namespace prismal
