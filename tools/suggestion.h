#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace tools {

/// How many characters must be put in, taken out, replaced or exchanged with their neighbour to
/// make `one` into `other`; bytes count as characters.
std::size_t editDistance(std::string_view one, std::string_view other);

/// That of `names` which `written` is most likely to mean: the same in other letter case, at most a
/// third of it mistyped, or its end; of equally near ones the first. None when nothing is near.
std::optional<std::string_view> nearest(std::string_view written,
                                        std::span<const std::string_view> names);

}  // namespace tools
