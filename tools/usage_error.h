#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli_app.h"

namespace tools {

/// The line that says that the first of `arguments` is none of the commands of `app`; none where it
/// is one, or an option.
std::optional<std::string> unknownCommand(const CLI::App& app,
                                          const std::vector<std::string>& arguments);

/// The line that says why `app` could not take what it has just tried to parse. It begins with the
/// command that the fault is in.
std::string usageError(const CLI::App& app, const CLI::Error& error);

}  // namespace tools
