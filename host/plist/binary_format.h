#pragma once

// How a binary property list is laid out: a header, the objects, a table of their offsets, and a
// trailer that says where the table is. Numbers are big-endian. An object begins with a marker byte
// of two halves: its kind, and a detail that is a size or a count.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace host::plist::binary {

inline constexpr std::string_view kMagic = "bplist0";
/// The magic and the version that is written.
inline constexpr std::string_view kHeader = "bplist00";

/// Six bytes that mean nothing to a reader, the sizes of an offset and of a reference, and three
/// eight-byte numbers: how many objects, which of them is the root, where the table begins.
inline constexpr std::size_t kTrailerSize = 32;
inline constexpr std::size_t kTrailerPadding = 6;

enum class Kind : std::uint8_t {
  kSimple = 0x0,  // the detail tells which
  kInteger = 0x1,
  kReal = 0x2,
  kDate = 0x3,
  kData = 0x4,
  kAsciiString = 0x5,
  kUtf16String = 0x6,
  kUid = 0x8,
  kArray = 0xA,
  kOrderedSet = 0xB,
  kSet = 0xC,
  kDictionary = 0xD,
};

/// Details of simple objects.
inline constexpr unsigned kNull = 0x0;
inline constexpr unsigned kFalse = 0x8;
inline constexpr unsigned kTrue = 0x9;
inline constexpr unsigned kFill = 0xF;

/// A count that does not fit into the detail follows as an integer object; this detail says so.
inline constexpr unsigned kCountFollows = 0xF;

/// Seconds from the start of 1970, where dates begin in memory, to that of 2001, where they begin
/// in a file.
inline constexpr double kEpoch = 978'307'200;

}  // namespace host::plist::binary
