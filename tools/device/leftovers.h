#pragma once

#include "host/files/device_root.h"
#include "host/files/result.h"

namespace tools::device {

/// Removes from a device what commands that were killed have left on their way, and the folders of
/// themes and of the user's pictures that no list names any more. For a process that has begun a
/// Change. A folder that can't be removed harms nobody and stays.
host::files::Result<host::files::Done> clearLeftovers(const host::files::DeviceRoot& device);

}  // namespace tools::device
