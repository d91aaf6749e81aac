#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace host::files {

/// Owns a file descriptor and closes it, leaving errno as it was. Empty when made from -1.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(Descriptor&& other) noexcept : fd_(other.release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    Descriptor(std::move(other)).swap(*this);
    return *this;
  }
  ~Descriptor() {
    if (fd_ < 0) return;
    const int error = errno;
    ::close(fd_);
    errno = error;
  }

  explicit operator bool() const { return fd_ >= 0; }
  int get() const { return fd_; }
  /// The caller owns it from here on.
  int release() { return std::exchange(fd_, -1); }
  void swap(Descriptor& other) noexcept { std::swap(fd_, other.fd_); }

 private:
  int fd_ = -1;
};

}  // namespace host::files
