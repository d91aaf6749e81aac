#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/files/device_root.h"

namespace tools::device {

// What the commands that change a device say on standard error, and what they exit with. Control
// characters, which a theme may have brought, are escaped.

/// Says in one line why the subcommand did not do what it was asked.
int refuse(std::string_view subcommand, const std::string& reason);

/// Says what people should know of what it did.
void tell(const std::vector<std::string>& notes);

/// Tells the processes of a device that a file has changed.
int post(const host::files::DeviceRoot& device, std::string_view notification,
         std::string_view subcommand);

}  // namespace tools::device
