#pragma once

#include <string>
#include <string_view>

namespace tools::scenario {

/// The number by which the JSON parser calls a number that no double holds.
inline constexpr int kNumberOverflow = 406;

/// What the JSON parser says of a text that is no JSON, without the prefix that places it, and cut
/// where it quotes half a file. One line.
std::string plainReason(std::string_view what);

}  // namespace tools::scenario
