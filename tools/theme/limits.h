#pragma once

// What putting a theme or settings on a device may cost, and what may be told of it.

#include <cstddef>

namespace tools::theme {

/// How many picture files go with a theme or a settings file, and how long all of them may be
/// together: one small file may be named by a million keys, or by as many links.
inline constexpr std::size_t kMaxPictures = 4096;
inline constexpr std::size_t kMaxPictureBytes = std::size_t{256} << 20U;
/// How many lines tell of what is missing; one more says how many others there are.
inline constexpr std::size_t kMaxComplaints = 200;
/// How much is shown of a name or a path that a stranger chose, in bytes.
inline constexpr std::size_t kMaxToldName = 120;

}  // namespace tools::theme
