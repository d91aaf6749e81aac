#pragma once

// The things that a keyboard is made of, read from their JSON shapes.

#include <string>

#include "scenario/model.h"
#include "scenario/node.h"

namespace tools::scenario {

// Each reads the value at `node`, which is not null, and throws Malformed when it is something
// else.
Keyplane readKeyplane(const Node& node);
Key readKey(const Node& node);
Gradient readGradient(const Node& node);
Traits readTraits(const Node& node);
BackgroundTraits readBackgroundTraits(const Node& node);
View readView(const Node& node);
Rgba readColor(const Node& node);
std::string readPath(const Node& node);

}  // namespace tools::scenario
