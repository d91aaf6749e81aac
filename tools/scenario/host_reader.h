#pragma once

// The members of the host, as the device begins and as it changes.

#include "scenario/model.h"
#include "scenario/node.h"

namespace tools::scenario {

/// The host of a scenario at `node`, or without one: the given members over the defaults.
Host readHost(const Node& node);
Host defaultHost();

/// The members that a `set` step at `node` gives, and no other. Members named "do" and "expect" are
/// the step's own.
Host readHostChanges(const Node& node);

}  // namespace tools::scenario
