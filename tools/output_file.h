#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/files/result.h"

namespace tools {

/// Writes a result of this program: to the file `path`, which a reader sees whole or not at all, or
/// to standard output when it is "-".
host::files::Result<host::files::Done> writeOutput(const std::filesystem::path& path,
                                                   std::string_view bytes);

/// Whether writeOutput would write to a terminal, where a picture is of no use.
bool isTerminal(const std::filesystem::path& path);

/// Why nothing can be written to `output`, in a line: it is one of `inputs`, under whatever name,
/// be they there or not, and what is made of them would take its place. None otherwise.
std::optional<std::string> refusalToReplace(const std::filesystem::path& output,
                                            std::span<const std::filesystem::path> inputs);

/// Writes text to standard output.
host::files::Result<host::files::Done> printResult(std::string_view text);

}  // namespace tools
