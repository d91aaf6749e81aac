#pragma once

#include <string>

#include "host/files/result.h"

namespace tools {

// The bytes of a file of this machine, 64 MiB at most, or why there are none.

/// Of a file or a pipe, which is waited for.
host::files::Result<std::string> readTextFile(const std::string& path);

/// Of a regular file; anything else is refused without waiting for it.
host::files::Result<std::string> readRegularFile(const std::string& path);

}  // namespace tools
