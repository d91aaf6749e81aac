#include "text_file.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace tools {

namespace fs = std::filesystem;
using host::files::Failure;

host::files::Result<std::string> readTextFile(const std::string& path) {
  constexpr std::uintmax_t kMaxBytes = std::uintmax_t{64} << 20U;
  std::error_code error;
  const auto size = fs::file_size(path, error);
  if (error) return Failure(error.value());
  if (size > kMaxBytes) return Failure(EFBIG, "more than 64 MiB");
  std::ifstream file(path, std::ios::binary);
  std::string bytes(size, '\0');
  if (!file.read(bytes.data(), static_cast<std::streamsize>(size))) return Failure(EIO);
  return bytes;
}

}  // namespace tools
