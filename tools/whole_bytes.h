#pragma once

#include <cstddef>

namespace tools {

// Through pipes and sockets, to the last byte; false when the other side is gone, or when a time
// that was set on the socket has passed.

bool writeAll(int fd, const void* data, std::size_t size);
bool readAll(int fd, void* data, std::size_t size);

}  // namespace tools
