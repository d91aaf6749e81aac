#pragma once

#include <string_view>

#include "cli_app.h"

namespace tools::sandbox {

/// Adds --sandbox and --no-sandbox. `asked` must live until the command line is parsed.
void addSandboxOption(CLI::App& command, bool& asked);

/// Whether to work in a sandbox. When it was asked for and the kernel doesn't offer all of it,
/// standard error says so in the name of `command`: for the start of a program, which asks once.
bool isToBeUsed(bool asked, std::string_view command);

}  // namespace tools::sandbox
