#include "text_file.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace tools {

namespace fs = std::filesystem;
using host::files::Failure;

host::files::Result<std::string> readTextFile(const std::string& path) {
  constexpr std::size_t kMaxBytes = std::size_t{64} << 20U;
  std::error_code error;
  if (fs::is_directory(path, error)) return Failure(EISDIR);
  std::ifstream file(path, std::ios::binary);
  if (!file) return Failure(errno);
  // In pieces: what is no regular file, such as a pipe, has no size to ask for.
  std::string bytes;
  std::array<char, std::size_t{64} << 10U> piece{};
  while (file.read(piece.data(), piece.size()) || file.gcount() > 0) {
    bytes.append(piece.data(), static_cast<std::size_t>(file.gcount()));
    if (bytes.size() > kMaxBytes) return Failure(EFBIG, "more than 64 MiB");
  }
  if (file.bad()) return Failure(EIO);
  return bytes;
}

}  // namespace tools
