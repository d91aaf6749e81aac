#pragma once

#include "host/files/device_root.h"
#include "host/files/result.h"
#include "keyboard/keyboard_process.h"

namespace tools::keyboard {

// What a process that is to be sandboxed gives up, in two steps; nothing happens to any other.
// Fonts, and the library, can be read throughout.

/// Before the theme is read: leaves its folder and that of the settings to be read, and the device,
/// which must be a private one, to be written. The network and other programs are gone.
host::files::Result<host::files::Done> confineToTheme(const Dress& dress,
                                                      const host::files::DeviceRoot& device);

/// Once the theme is on the device: leaves the device alone. A private one may be written anywhere;
/// of another, only what a keyboard writes, and its library may start the shell that empties the
/// keyboard's cache.
host::files::Result<host::files::Done> confineToDevice(const Dress& dress,
                                                       const host::files::DeviceRoot& device,
                                                       bool isPrivate);

}  // namespace tools::keyboard
