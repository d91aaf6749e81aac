#pragma once

// What one property list may ask of the process that reads it. A theme comes from strangers, and
// the reader runs inside every program that shows a keyboard.

#include <cstddef>

namespace host::plist {

/// How deep arrays and dictionaries may nest; a root container is at depth 1.
inline constexpr std::size_t kMaxDepth = 512;
/// How many values a list may hold, each counted as often as it is referred to; keys do not count.
inline constexpr std::size_t kMaxValues = 1'000'000;
/// How long a file may be.
inline constexpr std::size_t kMaxBytes = std::size_t{64} << 20U;
/// How many bytes of text, keys and data a list may hold, each counted as often as it is referred
/// to: else a few shared long strings would make a small file endless for whoever walks it.
inline constexpr std::size_t kMaxExpandedBytes = kMaxBytes;
/// How long the description of a value may be, for logs and messages; what is longer is cut off.
inline constexpr std::size_t kMaxDescribedBytes = std::size_t{16} << 10U;

}  // namespace host::plist
