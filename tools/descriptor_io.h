#pragma once

#include <cstddef>

namespace tools {

// All of it, however many calls that takes; false, with an errno value, when it can't be. An end
// that comes too early is no error of the system's: errno is 0 then.
bool writeAll(int fd, const void* data, std::size_t size);
bool readAll(int fd, void* data, std::size_t size);

}  // namespace tools
