#pragma once

#include <cstdint>
#include <vector>

#include "host/files/descriptor.h"
#include "host/files/result.h"

namespace tools::serve {

/// Sockets that listen on this machine's own addresses, and on no other.
struct Listeners {
  std::vector<host::files::Descriptor> sockets;  ///< 127.0.0.1 and, where there is one, ::1
  std::uint16_t port = 0;

  /// At `port`; 0 takes any that is free on both.
  static host::files::Result<Listeners> open(std::uint16_t port);
};

}  // namespace tools::serve
