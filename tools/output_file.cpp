#include "output_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <system_error>
#include <unistd.h>

namespace tools {

namespace fs = std::filesystem;
using host::files::Done;
using host::files::Failure;
using host::files::Result;

namespace {

bool areOne(const fs::path& one, const fs::path& other) {
  std::error_code error;
  if (fs::equivalent(one, other, error)) return true;
  const fs::path place = fs::weakly_canonical(one, error);
  return !error && place == fs::weakly_canonical(other, error) && !error;
}

}  // namespace

std::optional<std::string> refusalToReplace(const fs::path& output,
                                            std::span<const fs::path> inputs) {
  const auto isOutput = [&](const fs::path& input) { return areOne(output, input); };
  if (output == "-" || std::ranges::none_of(inputs, isOutput)) return std::nullopt;
  return output.string() + ": is read for what is to be written; choose another file";
}

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
