#pragma once

// The notation for a place in a JSON document.

#include <cstddef>
#include <string>
#include <string_view>

namespace tools::scenario {

/// `pointer` with one more step down: to a member of an object, or to an element of an array.
std::string pointerTo(std::string pointer, std::string_view member);
std::string pointerTo(std::string pointer, std::size_t index);

/// `pointer` for a message: control characters, which a stranger's scenario may have in a name,
/// stand as \u001b, so that a line stays one line and a terminal is left alone.
std::string printable(std::string_view pointer);

}  // namespace tools::scenario
