#include "output_file.h"

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <system_error>
#include <unistd.h>

#include "host/files/leftovers.h"

namespace tools {

namespace fs = std::filesystem;
using host::files::Done;
using host::files::Failure;
using host::files::Result;

Result<Done> printResult(std::string_view text) {
  const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (!whole || std::fflush(stdout) != 0) return Failure(errno);
  return Done();
}

bool isTerminal(const fs::path& path) {
  return path == "-" && isatty(STDOUT_FILENO) != 0;
}

Result<Done> writeOutput(const fs::path& path, std::string_view bytes) {
  if (path == "-") return printResult(bytes);
  std::error_code error;
  const fs::file_status before = fs::status(path, error);
  // What is no file, such as a pipe, can't be replaced and needs no care.
  const bool replaces = !fs::exists(before) || fs::is_regular_file(before);
  // A link stays, and what it leads to is replaced.
  const fs::path place = fs::is_symlink(path, error) ? fs::weakly_canonical(path, error) : path;
  fs::path target = place;
  if (replaces) target += ".part" + std::to_string(getpid());
  const host::files::Leftover leftover =
      replaces ? host::files::Leftover(target.string()) : host::files::Leftover();
  std::ofstream file(target, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) {
    const Failure failure(errno != 0 ? errno : EIO);
    if (replaces) fs::remove(target, error);
    return failure;
  }
  if (!replaces) return Done();
  if (fs::exists(before)) fs::permissions(target, before.permissions(), error);
  fs::rename(target, place, error);
  if (!error) return Done();
  const Failure failure(error.value());
  fs::remove(target, error);
  return failure;
}

}  // namespace tools
