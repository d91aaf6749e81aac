#pragma once

#include <string>

#include "host/files/result.h"

namespace tools {

/// The bytes of a file or pipe of this machine (64 MiB at most), or why there are none.
host::files::Result<std::string> readTextFile(const std::string& path);

}  // namespace tools
