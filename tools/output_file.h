#pragma once

#include <filesystem>
#include <string_view>

#include "host/files/result.h"

namespace tools {

/// Writes a result of this program: to the file `path`, which a reader sees whole or not at all, or
/// to standard output when it is "-".
host::files::Result<host::files::Done> writeOutput(const std::filesystem::path& path,
                                                   std::string_view bytes);

/// Whether writeOutput would write to a terminal, where a picture is of no use.
bool isTerminal(const std::filesystem::path& path);

/// Writes text to standard output.
host::files::Result<host::files::Done> printResult(std::string_view text);

}  // namespace tools
