#pragma once

namespace tools {

// What every subcommand exits with.
inline constexpr int kDone = 0;
inline constexpr int kFindings = 1;  ///< it ran, and found something: a difference, a fault
inline constexpr int kTrouble = 2;   ///< wrong usage, or something that can't be read or written

}  // namespace tools
