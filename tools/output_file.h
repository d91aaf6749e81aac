#pragma once

#include <filesystem>
#include <string_view>

#include "host/files/result.h"

namespace tools {

/// Writes a result of this program: to the file `path`, which a reader sees whole or not at all, or
/// to standard output when it is "-" and no terminal.
host::files::Result<host::files::Done> writeOutput(const std::filesystem::path& path,
                                                   std::string_view bytes);

}  // namespace tools
