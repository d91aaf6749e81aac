#pragma once

// The two themes that the device has one after the other: one whose values tell the library's
// answers apart, for the library's code in this program, and the one that is checked, for the
// library itself. Main thread only.

#include <optional>
#include <span>

#include "check/pictures.h"
#include "check/theme.h"
#include "host/files/device_root.h"

namespace tools::check {

/// Makes the library's code in this program read a theme in which every list of rules is a string,
/// its own name, and every picture has a path of its own. Once a process, before any keyboard is
/// shown.
void readTellingTheme(const Theme& theme, std::span<const Picture> pictures,
                      const host::files::DeviceRoot& device);

/// Which of `pictures` the library's code in this program puts behind the keyplane that is shown;
/// none when it puts none there.
std::optional<std::size_t> pictureBehind(platform::UIKBTree keyplane);
/// The same for the dictation panel, as the device is held.
std::optional<std::size_t> pictureWhileDictating();

/// Puts the theme itself on the device, its pictures where they were copied to. Rules that the
/// library would skip are left out: it would tell of them for every key.
void putTheme(const Theme& theme, std::span<const Picture> pictures,
              const host::files::DeviceRoot& device);

/// Whether a rule is one that the library tries.
bool isSound(platform::PropertyListView rule);

}  // namespace tools::check
