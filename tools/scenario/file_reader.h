#pragma once

// The files of the device, read from the forms in which a scenario gives them.

#include "scenario/model.h"
#include "scenario/node.h"

namespace tools::scenario {

/// Pixels of the longer edge, and of the whole, of a picture that a scenario may ask for.
inline constexpr std::int32_t kMaxImageEdge = 16384;
inline constexpr std::int64_t kMaxImagePixels = 64'000'000;

/// The file at `node`: an object with one member, which names the form. Throws Malformed.
File readFile(const Node& node);

}  // namespace tools::scenario
