#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tools::command_line {

/// The one of `words` that `mistyped` most likely means: the nearest, the first of equally near
/// ones, if no more than a third of its characters were left out, added, exchanged or swapped with
/// their neighbour.
std::optional<std::string> suggestionFor(std::string_view mistyped,
                                         const std::vector<std::string>& words);

}  // namespace tools::command_line
