#include "watch/file_watch.h"

#include <cerrno>
#include <cstring>
#include <limits.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tools::watch {

namespace fs = std::filesystem;
using host::files::Descriptor;
using host::files::Result;

namespace {

// Not IN_MODIFY: half a file is of no use. Who writes a file closes it.
constexpr std::uint32_t kEvents =
    IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_CREATE | IN_DELETE | IN_ATTRIB | IN_ONLYDIR;

/// Whether what has just been made has its contents already: not so a file that somebody is about
/// to write.
bool isMadeWhole(const fs::path& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return false;
  return !S_ISREG(status.st_mode) || status.st_nlink > 1;
}

}  // namespace

Result<FileWatch> FileWatch::start(std::span<const fs::path> files) {
  Descriptor inotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (!inotify) return host::files::lastFailure();
  FileWatch watch(std::move(inotify));
  for (const fs::path& file : files) {
    std::error_code error;
    watch.watchWayTo(fs::absolute(file, error).lexically_normal());
    // Where links lead, too.
    const fs::path target = fs::weakly_canonical(file, error);
    if (!error) watch.watchWayTo(target);
  }
  return watch;
}

void FileWatch::watchWayTo(const fs::path& file) {
  fs::path directory;
  for (const fs::path& name : file) {
    if (!directory.empty()) {
      const int watch = ::inotify_add_watch(inotify_.get(), directory.c_str(), kEvents);
      if (watch >= 0) {
        directories_[watch].path = directory;
        directories_[watch].names.insert(name.string());
      }
    }
    directory /= name;
  }
}

bool FileWatch::takeChanges() {
  alignas(inotify_event) char buffer[16 * (sizeof(inotify_event) + NAME_MAX + 1)];
  bool any = false;
  for (;;) {
    const ssize_t size = ::read(inotify_.get(), buffer, sizeof buffer);
    if (size < 0 && errno == EINTR) continue;
    if (size <= 0) return any;
    for (const char* at = buffer; at < buffer + size;) {
      inotify_event event;
      std::memcpy(&event, at, sizeof event);
      any = concerns(event, at + sizeof event) || any;
      at += sizeof event + event.len;
    }
  }
}

bool FileWatch::concerns(const inotify_event& event, const char* name) {
  constexpr std::uint32_t kLost = IN_Q_OVERFLOW | IN_IGNORED;
  constexpr std::uint32_t kMoves = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
  const auto directory = directories_.find(event.wd);
  const bool isNamed = directory != directories_.end() && event.len > 0 &&
                       directory->second.names.contains(std::string_view(name));
  const bool isLost = (event.mask & kLost) != 0;
  isStale_ = isStale_ || isLost || (isNamed && (event.mask & kMoves) != 0);
  if (isLost || !isNamed) return isLost;
  return (event.mask & IN_CREATE) == 0 || isMadeWhole(directory->second.path / name);
}

}  // namespace tools::watch
