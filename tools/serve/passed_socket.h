#pragma once

#include <optional>
#include <string>

#include "host/files/descriptor.h"

namespace tools::serve {

// Between the server and its supervisor, on a socket that keeps messages apart.

/// A message, and the socket that came with it, if any.
struct Passed {
  std::string text;
  host::files::Descriptor socket;
};

/// False when the other side is gone, or too far behind. `socket` -1: none; it stays the caller's.
bool pass(int channel, const std::string& text, int socket = -1);

/// Waits for a message; none when the other side is gone.
std::optional<Passed> takePassed(int channel);

}  // namespace tools::serve
