#pragma once

// The steps of a scenario.

#include "scenario/model.h"
#include "scenario/node.h"

namespace tools::scenario {

/// The step at `node`. Throws Malformed.
Step readStep(const Node& node);

}  // namespace tools::scenario
