#pragma once

#include "cli_app.h"
#include "keyboard/keyboard_process.h"

namespace tools::keyboard {

/// Adds the options that say what a keyboard is dressed with: the theme or the device, the settings
/// and the library. `dress` must live until the command line is parsed.
void addDressOptions(CLI::App& command, Dress& dress);

}  // namespace tools::keyboard
