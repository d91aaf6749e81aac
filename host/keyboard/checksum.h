#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace host::keyboard {

/// A number that another one follows for any other bytes, but for a rare chance: tells accidents,
/// not intent. Takes them eight at a time: half a millisecond for a megabyte.
inline std::uint64_t checksum(std::string_view bytes) {
  std::uint64_t sum = bytes.size();
  while (!bytes.empty()) {
    std::uint64_t word = 0;
    const std::size_t taken = std::min(sizeof word, bytes.size());
    std::memcpy(&word, bytes.data(), taken);
    sum = std::rotl(sum ^ word, 23) * 0x9e3779b97f4a7c15;
    bytes.remove_prefix(taken);
  }
  return sum;
}

}  // namespace host::keyboard
