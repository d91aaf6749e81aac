#pragma once

// What one picture may ask of the process that shows it. Pictures come from strangers, as themes
// do.

#include <cstddef>
#include <cstdint>

namespace host::images {

/// How long a file may be.
inline constexpr std::size_t kMaxFileBytes = std::size_t{64} << 20U;
/// How many pixels a side may have, and the whole. Checked before any of them is decoded.
inline constexpr std::uint32_t kMaxSide = 32767;
inline constexpr std::uint64_t kMaxPixels = 64'000'000;
/// How many pixels the pictures of a process may have together, 1 GiB of them: a theme may have one
/// for every keyplane, and none goes before the process does. Broken ones count each time that they
/// are decoded, since that takes as long.
inline constexpr std::uint64_t kMaxPixelsTogether = std::uint64_t{256} << 20U;

/// How often a progressive JPEG may go over the whole picture. Ten times are usual; a file of a few
/// bytes a scan could keep us busy for hours.
inline constexpr int kMaxScans = 64;
/// What the JPEG library may use besides the pixels: a progressive picture is kept until all of its
/// scans have been read.
inline constexpr std::size_t kMaxCoderBytes = std::size_t{512} << 20U;

/// What a chunk of a PNG may unpack to, and how many are kept. The ones that can be large are
/// skipped; this is for those to come.
inline constexpr std::size_t kMaxChunkBytes = std::size_t{1} << 20U;
inline constexpr std::uint32_t kMaxKeptChunks = 16;
/// How many packed bytes the last two rows of a PNG may take, and all that follows them: more than
/// two rows can need. What follows would unpack to a thousand times as much, and none of it is
/// seen.
inline constexpr std::size_t kMaxLastBytes = std::size_t{640} << 10U;
static_assert(kMaxLastBytes > std::size_t{2} * 8 * kMaxSide);

}  // namespace host::images
