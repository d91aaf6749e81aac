#include "host/files/open_in_root.h"

#include <cstdint>
#include <fcntl.h>
#include <limits.h>
#include <linux/openat2.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace host::files {
namespace {

// What the kernel allows, so that both ways agree on which chain of links is one too long.
constexpr int kMaxLinks = 40;

// The kernel answers EAGAIN when a rename anywhere on the machine met a `..`. That passes at once;
// a bound keeps a hostile renamer from holding us for ever.
constexpr int kMaxTries = 128;

Descriptor openByKernel(int root, const char* path, int flags,
                        std::uint64_t scope = RESOLVE_IN_ROOT) {
  open_how how{};
  how.flags = static_cast<unsigned>(flags | O_CLOEXEC);
  how.resolve = scope | RESOLVE_NO_MAGICLINKS;
  for (int tries = 0;; ++tries) {
    const long fd = ::syscall(SYS_openat2, root, path, &how, sizeof how);
    if (fd >= 0) return Descriptor(static_cast<int>(fd));
    if ((errno != EAGAIN && errno != EINTR) || tries == kMaxTries) return {};
  }
}

Descriptor openEntry(int directory, const char* name, int flags) {
  for (;;) {
    const int fd = ::openat(directory, name, flags | O_CLOEXEC | O_NOFOLLOW);
    if (fd >= 0 || errno != EINTR) return Descriptor(fd);
  }
}

Descriptor refuse(int error) {
  errno = error;
  return {};
}

// Resolves a path with plain openat, never letting the kernel follow a link or a `..`. Its limits:
// - It is many steps, not one. It holds the directories that it came through, so `..` leads back to
//   where the walk has been, even when that directory has been moved meanwhile; a last component
//   that is swapped for a link under its hands is refused with ELOOP. Neither leads out.
// - It holds a descriptor for each level, so a path deeper than the process's limit is refused.
// - A link of procfs is followed by its text, inside the root, where the kernel would refuse it.
// - Opening a directory takes the right to search it as well.
class Walk {
 public:
  Walk(int root, const std::string& path) : root_(root), rest_(path) {}

  Descriptor open(int flags) {
    if (rest_.empty()) return refuse(ENOENT);
    if (rest_.size() >= PATH_MAX) return refuse(ENAMETOOLONG);
    while (takeName()) {
      if (name_ == ".") continue;
      if (name_ == "..") {
        if (!way_.empty()) way_.pop_back();  // above the root is the root
        continue;
      }
      Descriptor entry = openEntry(current(), name_.c_str(), O_PATH);
      struct stat status {};
      if (!entry || ::fstat(entry.get(), &status) != 0) return {};
      if (S_ISDIR(status.st_mode)) {
        way_.push_back(std::move(entry));
      } else if (!S_ISLNK(status.st_mode)) {
        return rest_.empty() ? openEntry(current(), name_.c_str(), flags) : refuse(ENOTDIR);
      } else if (rest_.empty() && (flags & O_NOFOLLOW) != 0) {
        return openEntry(current(), name_.c_str(), flags);
      } else if (!follow(entry)) {
        return {};
      }
    }
    return openEntry(current(), ".", flags);
  }

 private:
  int current() const { return way_.empty() ? root_ : way_.back().get(); }

  // Moves the next component from rest_ to name_. A trailing slash stays in rest_, where it asks
  // for a directory.
  bool takeName() {
    const auto begin = rest_.find_first_not_of('/');
    if (begin == rest_.npos) return false;
    const auto end = rest_.find('/', begin);
    name_ = rest_.substr(begin, end - begin);
    rest_.erase(0, end);
    return true;
  }

  bool follow(const Descriptor& link) {
    char target[PATH_MAX];
    const ssize_t length = ::readlinkat(link.get(), "", target, sizeof target);
    if (length < 0) return false;
    if (++links_ > kMaxLinks)
      errno = ELOOP;
    else if (length == 0)
      errno = ENOENT;
    else if (length == sizeof target)
      errno = ENAMETOOLONG;
    else {
      if (target[0] == '/') way_.clear();
      rest_.insert(0, target, static_cast<std::size_t>(length));
      return true;
    }
    return false;
  }

  int root_;
  std::vector<Descriptor> way_;  // the directories from below the root to the current one
  std::string name_;
  std::string rest_;
  int links_ = 0;
};

}  // namespace

Resolution bestResolution(int root) {
  if (openByKernel(root, ".", O_PATH)) return Resolution::kKernel;
  // EPERM is what a sandbox's system call filter answers.
  return errno == ENOSYS || errno == EPERM ? Resolution::kWalk : Resolution::kKernel;
}

Result<Descriptor> openInRoot(int root, const std::string& path, int flags, Resolution resolution) {
  Descriptor opened = resolution == Resolution::kKernel ? openByKernel(root, path.c_str(), flags)
                                                        : Walk(root, path).open(flags);
  if (!opened) return lastFailure();
  return opened;
}

bool leadsOut(int root, const std::string& path) {
  return !openByKernel(root, path.c_str(), O_PATH, RESOLVE_BENEATH) && errno == EXDEV;
}

}  // namespace host::files
