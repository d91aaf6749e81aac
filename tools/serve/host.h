#pragma once

#include "host/drawing/fonts.h"
#include "keyboard/keyboard_process.h"
#include "serve/host_task.h"

namespace tools::serve {

/// Makes this process one with a keyboard, which does what `task` says for whoever is at the other
/// end of `socket`, until that end is closed. `fonts` may have been looked up before. Main thread,
/// of a process that has no other.
void runHost(const HostTask& task, const keyboard::Dress& dress, host::drawing::Fonts& fonts,
             int socket);

}  // namespace tools::serve
