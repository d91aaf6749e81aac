#pragma once

#include <cstddef>
#include <string>

#include "host/files/device_root.h"
#include "host/files/result.h"

namespace tools::theme {

/// All bytes of the file at `path`, a relative one, in a folder of this machine that it must not
/// leave; a failure when they are more than `max_bytes`, and EXDEV where a link leads out.
host::files::Result<std::string> readInFolder(const host::files::DeviceRoot& folder,
                                              const std::string& path, std::size_t max_bytes);

}  // namespace tools::theme
