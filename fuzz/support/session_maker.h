#pragma once

#include <vector>

#include "scenario/model.h"
#include "support/byte_source.h"

namespace fuzz {

/// What happens in a host process: a scenario of which the library knows nothing yet.
struct Session {
  tools::scenario::Scenario scenario;
  /// For each step whether it asks the same as the one before it, with nothing between.
  std::vector<bool> asksAgain;
};

/// Makes a session of bytes: the host, its files, and what happens, in any order. Writes to none
/// but a few paths.
Session makeSession(ByteSource& source);

}  // namespace fuzz
