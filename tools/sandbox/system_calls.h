#pragma once

#include <cstdint>

#include "host/files/result.h"

namespace tools::sandbox {

/// Whether this process, and whatever it starts, may still start programs.
enum class Programs : std::uint8_t { kForbidden, kAllowed };

/// Whether the kernel filters system calls and lets this process use that.
bool isFilterOffered();

/// Takes from this thread and those that it starts, until the end, the system calls that drawing
/// has no use for: all that reaches the network or another process, starts programs, changes what
/// rules for files leave alone, or administers the machine. They fail with EPERM. What is connected
/// already can still be sent to. What may be done to this process may not be done to one that it
/// starts, nor by that one to itself by its number.
host::files::Result<host::files::Done> forbidSystemCalls(Programs programs);

}  // namespace tools::sandbox
