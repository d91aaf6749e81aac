#pragma once

#include <functional>
#include <string_view>

#include "device/open_device.h"
#include "device/theme_store.h"

namespace tools::device {

/// Stages what a subcommand does to the themes of a device.
using StageThemes = std::function<host::files::Result<host::files::Done>(ThemeStore&)>;

/// Changes the themes of the device at `place`, all or nothing, and tells running programs. Answers
/// with the exit status.
int changeThemes(std::string_view subcommand, const Place& place,
                 host::files::DeviceRoot::Creation creation, const StageThemes& stage);

}  // namespace tools::device
