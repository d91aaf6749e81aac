#pragma once

#include <filesystem>
#include <optional>

#include "cli_app.h"
#include "host/files/device_root.h"
#include "host/files/result.h"

namespace tools::device {

/// Where the user says that the device lies; none where the default one is meant.
using Place = std::optional<std::filesystem::path>;

/// Adds --device-root. `place` must live until the command line is parsed.
void addDeviceOption(CLI::App& command, Place& place);

/// The device at `place`. The failure's text names the directory. The machine's own root is
/// refused: nobody can mean it as a device.
host::files::Result<host::files::DeviceRoot> openDevice(const Place& place,
                                                        host::files::DeviceRoot::Creation creation);

/// The same for who only looks: nothing where no `place` was said and the default one has never
/// been made, which is what a device without themes and settings is like.
host::files::Result<std::optional<host::files::DeviceRoot>> openDeviceIfAny(const Place& place);

}  // namespace tools::device
