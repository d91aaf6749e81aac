#pragma once

// What a target defines. The fuzzing engine calls it millions of times in one process, the replayer
// once for each file of its corpus.

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace fuzz {

inline std::string_view textOf(const std::uint8_t* bytes, std::size_t size) {
  return {reinterpret_cast<const char*>(bytes), size};
}

}  // namespace fuzz
