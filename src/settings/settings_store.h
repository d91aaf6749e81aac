#pragma once

#include <string_view>

#include "platform/foundation.h"
#include "support/process_lifetime.h"

namespace prismal {

/// The user's settings as last loaded: null until PMInitializeSettings has run, then a dictionary,
/// possibly empty. Replaced whole by every load.
extern ProcessLifetime<platform::PropertyList> settings;

/// The master switch. It decides about named colours and nothing else.
extern constinit bool _enabled;

/// Set by the themes notification, and never cleared.
extern constinit bool _themeReloadRequested;

/// Registers for both notifications and loads the settings, the first time it is called.
void PMInitializeSettings();

/// Reads the user's settings file or, when that cannot be read, the default one; no key is ever
/// taken from the second while the first can be read.
void PMLoadSettings();

void PMReloadThemesCallback(platform::CFNotificationCenterRef center, void* observer,
                            std::string_view name, const void* object,
                            platform::PropertyListView userInfo);
void PMReloadSettingsCallback(platform::CFNotificationCenterRef center, void* observer,
                              std::string_view name, const void* object,
                              platform::PropertyListView userInfo);

}  // namespace prismal
