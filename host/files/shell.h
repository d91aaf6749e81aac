#pragma once

#include <string_view>

#include "host/files/device_root.h"

namespace host::files {

/// Runs `command` with /bin/sh in the root and waits for it. Returns its wait status as the C
/// library's system does: 0 for success, 256 for exit status 1; -1 when no shell could be started.
/// To empty a directory that doesn't exist none is started, for it would change nothing.
///
/// Each device path in the command (see rewriteDevicePaths) is resolved inside the root beforehand
/// and named to the shell by the descriptor of its directory, /proc/self/fd/N/NAME, so that neither
/// what the root's own path is called nor a symbolic link in the root leads out of it. Below a
/// directory that doesn't exist nothing is found. A command with a path that can't be named so
/// isn't run: -1. Paths that the command makes up as it runs are not looked at. Any thread.
int runShell(const DeviceRoot& root, std::string_view command);

}  // namespace host::files
