#include "host/files/leftovers.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <limits.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

// Below removeLeftovers nothing but system calls: a signal handler may neither allocate nor wait.

namespace host::files {
namespace {

enum class State { kFree, kBeingNoted, kNoted };

struct Slot {
  std::atomic<State> state = State::kFree;
  pid_t owner = 0;
  char path[PATH_MAX] = "";
};

/// A thread has one at a time, the process a directory besides.
constexpr int kSlots = 64;
constinit Slot slots[kSlots];

constexpr std::size_t kNamesBytes = 4096;

/// Ends a removal that something keeps from coming to an end.
constexpr int kMostSteps = 1'000'000;

int openDirectory(int parent, const char* name) {
  return ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

bool remove(int directory, const char* name) {
  return ::unlinkat(directory, name, 0) == 0 || ::unlinkat(directory, name, AT_REMOVEDIR) == 0;
}

// As the kernel writes it: inode, offset, length, type, name.
constexpr std::size_t kLengthOffset = 16;
constexpr std::size_t kNameOffset = 19;

/// Goes down into a tree and up again with one directory open at a time, however deep it is.
class Removal {
 public:
  explicit Removal(int directory) : directory_(directory) {}
  Removal(const Removal&) = delete;
  Removal& operator=(const Removal&) = delete;
  ~Removal() { ::close(directory_); }

  void run() {
    for (int step = 0; step < kMostSteps; ++step) {
      if (removeEntries()) continue;
      if (depth_ == 0 || !move("..", -1)) return;
    }
  }

 private:
  /// Whether it went down instead, into a directory that isn't empty.
  bool removeEntries() {
    ::lseek(directory_, 0, SEEK_SET);
    for (;;) {
      const long size = ::syscall(SYS_getdents64, directory_, names_, sizeof names_);
      if (size <= 0) return false;
      for (long at = 0; at < size;) {
        unsigned short length = 0;
        std::memcpy(&length, names_ + at + kLengthOffset, sizeof length);
        const char* const name = names_ + at + kNameOffset;
        at += length;
        if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0) continue;
        if (!remove(directory_, name) && (errno == ENOTEMPTY || errno == EEXIST) && move(name, 1)) {
          return true;
        }
      }
    }
  }

  bool move(const char* name, int levels) {
    const int next = openDirectory(directory_, name);
    if (next < 0) return false;
    ::close(std::exchange(directory_, next));
    depth_ += levels;
    return true;
  }

  int directory_;
  int depth_ = 0;
  alignas(8) char names_[kNamesBytes] = {};
};

}  // namespace

void removeTree(const char* path) {
  if (remove(AT_FDCWD, path)) return;
  const int directory = openDirectory(AT_FDCWD, path);
  if (directory < 0) return;
  Removal(directory).run();
  ::rmdir(path);
}

Leftover::Leftover(const std::string& path) {
  if (path.size() >= PATH_MAX) return;
  for (int i = 0; i < kSlots; ++i) {
    Slot& slot = slots[i];
    State expected = State::kFree;
    if (!slot.state.compare_exchange_strong(expected, State::kBeingNoted)) continue;
    slot.owner = ::getpid();
    std::memcpy(slot.path, path.c_str(), path.size() + 1);
    slot.state = State::kNoted;
    slot_ = i;
    return;
  }
}

Leftover::Leftover(Leftover&& other) noexcept : slot_(std::exchange(other.slot_, -1)) {}

Leftover& Leftover::operator=(Leftover&& other) noexcept {
  std::swap(slot_, other.slot_);
  return *this;
}

Leftover::~Leftover() {
  if (slot_ >= 0) slots[slot_].state = State::kFree;
}

InterruptionsWait::InterruptionsWait() {
  sigset_t held;
  sigemptyset(&held);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, signal);
  pthread_sigmask(SIG_BLOCK, &held, &before_);
}

InterruptionsWait::~InterruptionsWait() {
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

void removeLeftovers() {
  const int error = errno;
  for (const Slot& slot : slots) {
    if (slot.state == State::kNoted && slot.owner == ::getpid()) removeTree(slot.path);
  }
  errno = error;
}

}  // namespace host::files
