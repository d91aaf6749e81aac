#include "whole_bytes.h"

#include <cerrno>
#include <unistd.h>

namespace tools {

bool writeAll(int fd, const void* data, std::size_t size) {
  const char* at = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t written = ::write(fd, at, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    at += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

bool readAll(int fd, void* data, std::size_t size) {
  char* at = static_cast<char*>(data);
  while (size > 0) {
    const ssize_t taken = ::read(fd, at, size);
    if (taken < 0 && errno == EINTR) continue;
    if (taken <= 0) return false;
    at += taken;
    size -= static_cast<std::size_t>(taken);
  }
  return true;
}

}  // namespace tools
