#include "output_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "descriptor_io.h"

namespace tools {

namespace fs = std::filesystem;
using host::files::Descriptor;
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

Result<OutputFile> OutputFile::open(const fs::path& path, Links links) {
  OutputFile output;
  if (path == "-") {
    std::fflush(stdout);
    output.file_ = Descriptor(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0));
    if (!output.file_) return host::files::lastFailure();
    return output;
  }
  std::error_code error;
  const bool follows = links == Links::kFollowed;
  const fs::file_status before =
      follows ? fs::status(path, error) : fs::symlink_status(path, error);
  if (follows && fs::exists(before) && !fs::is_regular_file(before)) {
    output.file_ = Descriptor(::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    if (!output.file_) return host::files::lastFailure();
    return output;
  }
  // A link that is followed stays, and what it leads to is replaced.
  const bool isLink = follows && fs::is_symlink(path, error);
  output.place_ = isLink ? fs::weakly_canonical(path, error) : path;
  if (fs::is_regular_file(before)) output.permissions_ = before.permissions();
  if (!output.openNew()) return host::files::lastFailure();
  return output;
}

OutputFile::~OutputFile() {
  if (!part_.empty()) ::unlink(part_.c_str());
}

bool OutputFile::openNew() {
  constexpr mode_t kMode = 0666;
  const fs::path folder = place_.has_parent_path() ? place_.parent_path() : fs::path(".");
  // Without a name, so that it goes even when this process is killed.
  file_ = Descriptor(::open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, kMode));
  if (file_ || (errno != EOPNOTSUPP && errno != EISDIR)) return static_cast<bool>(file_);
  const fs::path part = partName();
  ::unlink(part.c_str());  // a killed process of the same number may have left one
  // What somebody else puts there meanwhile is neither followed nor written to.
  file_ =
      Descriptor(::open(part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kMode));
  if (file_) part_ = part;
  return static_cast<bool>(file_);
}

fs::path OutputFile::partName() const {
  fs::path part = place_;
  return part += ".part" + std::to_string(getpid());
}

bool OutputFile::nameIt() {
  if (!part_.empty()) return true;
  const fs::path part = partName();
  ::unlink(part.c_str());  // a killed process of the same number may have left one
  const std::string open = "/proc/self/fd/" + std::to_string(file_.get());
  const bool isNamed =
      ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, part.c_str(), AT_SYMLINK_FOLLOW) == 0;
  if (isNamed) part_ = part;
  return isNamed;
}

Result<Done> OutputFile::finish() {
  const bool replaces = !place_.empty();
  if (permissions_) ::fchmod(file_.get(), static_cast<mode_t>(*permissions_));
  if (replaces && !nameIt()) return host::files::lastFailure();
  // Some file systems tell only now that there was no room.
  if (::close(file_.release()) != 0) return host::files::lastFailure();
  if (!replaces) return Done();
  if (::rename(part_.c_str(), place_.c_str()) != 0) return host::files::lastFailure();
  part_.clear();
  return Done();
}

Result<Done> writeOutput(const fs::path& path, std::string_view bytes, Links links) {
  auto output = OutputFile::open(path, links);
  if (!output) return output.failure();
  if (!writeAll(output->descriptor(), bytes.data(), bytes.size())) {
    return host::files::lastFailure();
  }
  return output->finish();
}

}  // namespace tools
