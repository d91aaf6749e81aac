#pragma once

#include "cli_app.h"

namespace tools {

/// Adds `prismal render`. `status` becomes the exit status of the program when it has run.
void addRenderCommand(CLI::App& app, int& status);

}  // namespace tools
