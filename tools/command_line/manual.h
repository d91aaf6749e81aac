#pragma once

#include <string>

#include "cli_app.h"

namespace tools::command_line {

/// Every command that --help lists, with all of its options and examples, as Markdown below a
/// heading of the second level each.
std::string manualOf(const CLI::App& app);

}  // namespace tools::command_line
