#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/files/device_root.h"
#include "scenario/model.h"

namespace tools::replay {

/// Puts a scenario's file at a device path, in the place of what stood there. None on success, else
/// why not.
std::optional<std::string> writeDeviceFile(const host::files::DeviceRoot& root,
                                           std::string_view path, const scenario::File& file);

}  // namespace tools::replay
