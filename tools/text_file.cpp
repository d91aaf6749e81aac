#include "text_file.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/files/descriptor.h"

namespace tools {

using host::files::Descriptor;
using host::files::Failure;
using host::files::Result;

namespace {

constexpr std::size_t kMaxBytes = std::size_t{64} << 20U;

Failure tooLong() {
  return Failure(EFBIG, "more than 64 MiB");
}

Descriptor open(const std::string& path, int flags) {
  return Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | flags));
}

/// In pieces: what is no regular file, such as a pipe, has no size to ask for.
Result<std::string> readAll(const Descriptor& file) {
  struct stat status {};
  if (::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
      static_cast<std::size_t>(status.st_size) > kMaxBytes) {
    return tooLong();
  }
  std::string bytes;
  std::array<char, std::size_t{64} << 10U> piece{};
  for (;;) {
    const ssize_t size = ::read(file.get(), piece.data(), piece.size());
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) return host::files::lastFailure();
    if (size == 0) return bytes;
    bytes.append(piece.data(), static_cast<std::size_t>(size));
    if (bytes.size() > kMaxBytes) return tooLong();
  }
}

}  // namespace

Result<std::string> readTextFile(const std::string& path) {
  const Descriptor file = open(path, 0);
  return file ? readAll(file) : host::files::lastFailure();
}

Result<std::string> readRegularFile(const std::string& path) {
  const Descriptor file = open(path, O_NONBLOCK);
  struct stat status {};
  if (!file || ::fstat(file.get(), &status) != 0) return host::files::lastFailure();
  if (S_ISDIR(status.st_mode)) return Failure(EISDIR);
  if (!S_ISREG(status.st_mode)) return Failure(EINVAL, "Not a regular file");
  return readAll(file);
}

}  // namespace tools
