#include "fault_points.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <exception>
#include <execinfo.h>
#include <fcntl.h>
#include <limits.h>
#include <new>
#include <optional>
#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace tests {
namespace {

constexpr int kDepth = 24;
constexpr unsigned kSeenSize = 1U << 17U;
constexpr unsigned kSecondsACopy = 30;
/// What a process ends with in which no call was to fail.
constexpr int kNoSuchCall = 88;

// All of it in plain memory: what looks after allocations may not make any.
struct Points {
  std::optional<unsigned> nth;  // of all calls; none: every place once
  bool failChanges = false;
  unsigned calls = 0;
  bool armed = false;
  bool isCopy = false;
  int unharmed = 0;
  FaultRun run;
  FaultCount count;
  unsigned points = 0;
  std::array<std::uint64_t, kSeenSize> seen{};
  const char* name = "";
  std::array<char, PATH_MAX> file{};
  std::array<void*, kDepth> stack{};
  int depth = 0;
};

Points& points() {
  static Points all;
  return all;
}

/// Whether the call has been made from here before. `name` tells apart calls on various files.
bool isKnown(std::uint64_t place) {
  auto& seen = points().seen;
  for (std::uint64_t i = place % kSeenSize;; i = (i + 1) % kSeenSize) {
    if (seen[i] == place) return true;
    if (seen[i] != 0) continue;
    seen[i] = place;
    return false;
  }
}

std::uint64_t mixed(std::uint64_t hash, std::uint64_t value) {
  return (hash ^ value) * 0x100000001b3U;
}

std::uint64_t placeOfCall() {
  Points& all = points();
  all.depth = backtrace(all.stack.data(), kDepth);
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (int i = 0; i < all.depth; ++i) {
    hash = mixed(hash, reinterpret_cast<std::uint64_t>(all.stack[static_cast<std::size_t>(i)]));
  }
  for (const char* c = all.file.data(); *c != '\0'; ++c) {
    hash = mixed(hash, static_cast<unsigned char>(*c));
  }
  return hash | 1U;
}

/// In the first process: waits for the copy.
void await(pid_t copy) {
  Points& all = points();
  int status = 0;
  while (waitpid(copy, &status, 0) < 0 && errno == EINTR) {
  }
  ++all.count.calls;
  if (status == 0) return;
  ++all.count.faults;
  std::fprintf(stderr, "%s%s%s failed, made here; the process then %s %d:\n", all.name,
               all.file[0] != '\0' ? " of " : "", all.file.data(),
               WIFSIGNALED(status) ? "died of signal" : "ended with",
               WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status));
  backtrace_symbols_fd(all.stack.data(), all.depth, STDERR_FILENO);
}

/// Whether a library that draws made the call. What those do without memory is theirs to get right,
/// and they don't always: some of their calls leave a broken cache behind, or a null pointer.
bool isOfDrawing(const void* caller) {
  constexpr std::string_view kLibraries[] = {"libcairo", "libpixman", "libfreetype", "libharfbuzz",
                                             "libfontconfig"};
  Dl_info info{};
  if (dladdr(caller, &info) == 0 || info.dli_fname == nullptr) return false;
  const std::string_view path = info.dli_fname;
  return std::ranges::any_of(kLibraries, [&](std::string_view library) {
    return path.find(library) != std::string_view::npos;
  });
}

/// Whether it is the one call that is to fail.
bool isNth(const char* name, bool isAllocation) {
  Points& all = points();
  if (all.calls++ != *all.nth) return false;
  all.name = name;
  if (isAllocation) all.file[0] = '\0';
  all.armed = false;
  all.isCopy = true;
  return true;
}

/// Whether the call that is about to be made is to fail. Makes the copy in which it does.
bool shallFail(const char* name, bool isAllocation, const void* caller = nullptr) {
  Points& all = points();
  if (!all.armed || all.unharmed > 0) return false;
  if (!(isAllocation ? all.run.allocations : all.run.systemCalls)) return false;
  if (isAllocation && isOfDrawing(caller)) return false;
  if (all.failChanges) return false;
  if (all.nth) return isNth(name, isAllocation);
  const int error = errno;
  all.armed = false;  // what is called from here is left alone
  bool fails = false;
  all.name = name;
  if (isAllocation) all.file[0] = '\0';
  if (!isKnown(placeOfCall()) && all.points++ % all.run.oneOf == 0) {
    const pid_t copy = fork();
    if (copy == 0) {
      alarm(kSecondsACopy);
      all.isCopy = fails = true;
    } else if (copy > 0) {
      await(copy);
    }
  }
  all.armed = !fails;
  errno = error;
  return fails;
}

/// Takes down which file of the device the path is of.
void noteFile(std::string_view path, bool isInDevice) {
  Points& all = points();
  if (!all.armed || all.unharmed > 0) return;
  all.file[0] = '\0';
  const std::string_view device = all.run.device;
  if (!isInDevice) {
    if (!path.starts_with(device)) return;
    path.remove_prefix(device.size());
  }
  if (path.size() >= all.file.size()) return;
  std::memcpy(all.file.data(), path.data(), path.size());
  all.file[path.size()] = '\0';
}

void noteFile(int fd) {
  if (!points().armed || points().unharmed > 0) return;
  char name[64];
  static_cast<void>(std::snprintf(name, sizeof name, "/proc/self/fd/%d", fd));
  char path[PATH_MAX];
  const ssize_t size = ::readlink(name, path, sizeof path);
  noteFile({path, size > 0 ? static_cast<std::size_t>(size) : 0}, false);
}

bool failsWith(int error, const char* name) {
  if (!shallFail(name, false)) return false;
  errno = error;
  return true;
}

/// The same for a call that changes files.
bool changeFailsWith(int error, const char* name) {
  const Points& all = points();
  if (all.run.errorOfChanges != 0) error = all.run.errorOfChanges;
  if (!all.failChanges || !all.armed || all.unharmed > 0) return failsWith(error, name);
  errno = error;
  return true;
}

template <class Function>
Function* real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// What is wrong after `work`, in a copy; ends it.
[[noreturn]] void endCopy(const std::function<std::string(const Call&)>& judge) {
  Points& all = points();
  all.armed = false;
  const std::string wrong = judge({all.name, all.file.data()});
  if (!wrong.empty()) std::fprintf(stderr, "%s\n", wrong.c_str());
#ifdef __SANITIZE_ADDRESS__
  if (__lsan_do_recoverable_leak_check() != 0) _exit(3);
#endif
  _exit(wrong.empty() ? 0 : 1);
}

void workUnderFaults(const FaultRun& run, const std::function<void()>& work) {
  Points& all = points();
  all.run = run;
  all.depth = backtrace(all.stack.data(), kDepth);  // loads what it needs
  all.armed = true;
  try {
    work();
  } catch (const std::exception& error) {
    all.armed = false;
    if (!all.isCopy) std::fprintf(stderr, "without any fault: %s\n", error.what());
  }
  all.armed = false;
}

/// Whether what is wrong, if anything, has been told by a process of its own.
int statusOf(const std::function<void()>& work) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    alarm(kSecondsACopy);
    work();
    _exit(kNoSuchCall);
  }
  int status = -1;
  waitpid(child, &status, 0);
  return status;
}

std::string wrongOf(int status) {
  if (status == 0) return "";
  return WIFSIGNALED(status) ? "died of signal " + std::to_string(WTERMSIG(status))
                             : "ended with " + std::to_string(WEXITSTATUS(status));
}

}  // namespace

std::optional<std::string> failNth(const FaultRun& run, unsigned nth,
                                   const std::function<void()>& work,
                                   const std::function<std::string(const Call&)>& judge) {
  const int status = statusOf([&] {
    points().nth = nth;
    workUnderFaults(run, work);
    if (points().isCopy) endCopy(judge);
  });
  if (WIFEXITED(status) && WEXITSTATUS(status) == kNoSuchCall) return std::nullopt;
  return wrongOf(status);
}

std::string failChanges(const FaultRun& run, const std::function<void()>& work,
                        const std::function<std::string(const Call&)>& judge) {
  return wrongOf(statusOf([&] {
    points().failChanges = true;
    points().isCopy = true;
    workUnderFaults(run, work);
    endCopy(judge);
  }));
}

Unharmed::Unharmed() {
  ++points().unharmed;
}

Unharmed::~Unharmed() {
  --points().unharmed;
}

FaultCount failInTurn(const FaultRun& run, const std::function<void()>& work,
                      const std::function<std::string(const Call&)>& judge) {
  int ends[2];
  if (pipe(ends) != 0) return {};
  std::fflush(nullptr);
  const pid_t first = fork();
  if (first == 0) {
    Points& all = points();
    workUnderFaults(run, work);
    if (all.isCopy) endCopy(judge);
    const bool isTold = ::write(ends[1], &all.count, sizeof all.count) > 0;
    _exit(isTold ? 0 : 1);
  }
  close(ends[1]);
  FaultCount count;
  const ssize_t size = ::read(ends[0], &count, sizeof count);
  close(ends[0]);
  int status = 0;
  waitpid(first, &status, 0);
  if (size != static_cast<ssize_t>(sizeof count) || status != 0) return {0, 1};
  return count;
}

}  // namespace tests

// What stands before the functions of the C library.

#define INTERPOSED extern "C" __attribute__((visibility("default")))
// NOLINTBEGIN(*-reserved-identifier,*-dcl37-c,*-vararg,cert-dcl50-cpp,*-no-int-to-ptr)

using tests::changeFailsWith;
using tests::failsWith;
using tests::noteFile;
using tests::real;
using tests::shallFail;

INTERPOSED long syscall(long number, ...) {
  va_list list;
  va_start(list, number);
  long arguments[6];
  for (long& argument : arguments) argument = va_arg(list, long);
  va_end(list);
  if (number == SYS_openat2) {
    noteFile(reinterpret_cast<const char*>(arguments[1]), true);
    if (failsWith(EIO, "openat2")) return -1;
  }
  static auto* const next = real<long(long, ...)>("syscall");
  return next(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4],
              arguments[5]);
}

INTERPOSED int open(const char* path, int flags, ...) {
  va_list list;
  va_start(list, flags);
  const mode_t mode = va_arg(list, mode_t);
  va_end(list);
  noteFile(path, false);
  if (failsWith(EMFILE, "open")) return -1;
  static auto* const next = real<int(const char*, int, ...)>("open");
  return next(path, flags, mode);
}

namespace {

bool failsToOpenAt(int directory, int flags) {
  noteFile(directory);
  const bool isChange = (flags & (O_CREAT | O_WRONLY | O_RDWR)) != 0;
  return isChange ? changeFailsWith(ENOSPC, "openat") : failsWith(EACCES, "openat");
}

}  // namespace

INTERPOSED int openat(int directory, const char* path, int flags, ...) {
  va_list list;
  va_start(list, flags);
  const mode_t mode = va_arg(list, mode_t);
  va_end(list);
  if (failsToOpenAt(directory, flags)) return -1;
  static auto* const next = real<int(int, const char*, int, ...)>("openat");
  return next(directory, path, flags, mode);
}

// What a hardened build calls where no mode is given. NOLINTNEXTLINE(bugprone-reserved-identifier)
INTERPOSED int __openat_2(int directory, const char* path, int flags) {
  if (failsToOpenAt(directory, flags)) return -1;
  static auto* const next = real<int(int, const char*, int)>("__openat_2");
  return next(directory, path, flags);
}

INTERPOSED ssize_t read(int fd, void* buffer, std::size_t size) {
  noteFile(fd);
  if (failsWith(EIO, "read")) return -1;
  static auto* const next = real<ssize_t(int, void*, std::size_t)>("read");
  return next(fd, buffer, size);
}

INTERPOSED int fstat(int fd, struct stat* status) noexcept {
  noteFile(fd);
  if (failsWith(EIO, "fstat")) return -1;
  static auto* const next = real<int(int, struct stat*)>("fstat");
  return next(fd, status);
}

INTERPOSED int fstatat(int fd, const char* path, struct stat* status, int flags) noexcept {
  noteFile(fd);
  if (failsWith(EIO, "fstatat")) return -1;
  static auto* const next = real<int(int, const char*, struct stat*, int)>("fstatat");
  return next(fd, path, status, flags);
}

INTERPOSED int stat(const char* path, struct stat* status) noexcept {
  noteFile(path, false);
  if (failsWith(EACCES, "stat")) return -1;
  static auto* const next = real<int(const char*, struct stat*)>("stat");
  return next(path, status);
}

INTERPOSED void* mmap(void* at, std::size_t size, int protection, int flags, int fd,
                      off_t offset) noexcept {
  if (fd >= 0) {
    noteFile(fd);
    if (failsWith(ENOMEM, "mmap")) return MAP_FAILED;
  }
  static auto* const next = real<void*(void*, std::size_t, int, int, int, off_t)>("mmap");
  return next(at, size, protection, flags, fd, offset);
}

INTERPOSED int mkdirat(int directory, const char* path, mode_t mode) noexcept {
  noteFile(directory);
  if (changeFailsWith(ENOSPC, "mkdirat")) return -1;
  static auto* const next = real<int(int, const char*, mode_t)>("mkdirat");
  return next(directory, path, mode);
}

INTERPOSED ssize_t write(int fd, const void* buffer, std::size_t size) {
  noteFile(fd);
  if (fd > STDERR_FILENO && changeFailsWith(ENOSPC, "write")) return -1;
  static auto* const next = real<ssize_t(int, const void*, std::size_t)>("write");
  return next(fd, buffer, size);
}

INTERPOSED int fsync(int fd) {
  noteFile(fd);
  if (changeFailsWith(EIO, "fsync")) return -1;
  static auto* const next = real<int(int)>("fsync");
  return next(fd);
}

INTERPOSED int fchmod(int fd, mode_t mode) noexcept {
  noteFile(fd);
  if (changeFailsWith(EPERM, "fchmod")) return -1;
  static auto* const next = real<int(int, mode_t)>("fchmod");
  return next(fd, mode);
}

INTERPOSED int flock(int fd, int operation) noexcept {
  noteFile(fd);
  if (failsWith(ENOLCK, "flock")) return -1;
  static auto* const next = real<int(int, int)>("flock");
  return next(fd, operation);
}

INTERPOSED int unlinkat(int directory, const char* path, int flags) noexcept {
  noteFile(directory);
  if (changeFailsWith(EPERM, "unlinkat")) return -1;
  static auto* const next = real<int(int, const char*, int)>("unlinkat");
  return next(directory, path, flags);
}

INTERPOSED int renameat(int from, const char* name, int to, const char* newName) noexcept {
  noteFile(to);
  if (changeFailsWith(ENOSPC, "renameat")) return -1;
  static auto* const next = real<int(int, const char*, int, const char*)>("renameat");
  return next(from, name, to, newName);
}

INTERPOSED int renameat2(int from, const char* name, int to, const char* newName,
                         unsigned flags) noexcept {
  noteFile(to);
  if (changeFailsWith(ENOSPC, "renameat2")) return -1;
  static auto* const next = real<int(int, const char*, int, const char*, unsigned)>("renameat2");
  return next(from, name, to, newName, flags);
}

INTERPOSED int utimensat(int directory, const char* path, const struct timespec times[2],
                         int flags) noexcept {
  noteFile(directory);
  if (changeFailsWith(EPERM, "utimensat")) return -1;
  static auto* const next = real<int(int, const char*, const struct timespec*, int)>("utimensat");
  return next(directory, path, times, flags);
}

INTERPOSED DIR* fdopendir(int fd) {
  noteFile(fd);
  if (failsWith(ENOMEM, "fdopendir")) return nullptr;
  static auto* const next = real<DIR*(int)>("fdopendir");
  return next(fd);
}

INTERPOSED int inotify_init1(int flags) noexcept {
  noteFile("", false);
  if (failsWith(EMFILE, "inotify_init1")) return -1;
  static auto* const next = real<int(int)>("inotify_init1");
  return next(flags);
}

INTERPOSED int inotify_add_watch(int fd, const char* path, std::uint32_t mask) noexcept {
  noteFile("", false);
  if (failsWith(ENOSPC, "inotify_add_watch")) return -1;
  static auto* const next = real<int(int, const char*, std::uint32_t)>("inotify_add_watch");
  return next(fd, path, mask);
}

INTERPOSED int posix_spawn(pid_t* process, const char* path,
                           const posix_spawn_file_actions_t* actions,
                           const posix_spawnattr_t* attributes, char* const* arguments,
                           char* const* environment) {
  noteFile("", false);
  if (shallFail("posix_spawn", false)) return EAGAIN;
  static auto* const next =
      real<int(pid_t*, const char*, const posix_spawn_file_actions_t*, const posix_spawnattr_t*,
               char* const*, char* const*)>("posix_spawn");
  return next(process, path, actions, attributes, arguments, environment);
}

#ifdef __SANITIZE_ADDRESS__

// The sanitizer looks after malloc itself; what the language allocates is ours.
void* operator new(std::size_t size) {
  if (!shallFail("allocation", true)) {
    if (void* const memory = std::malloc(size)) return memory;
  }
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return shallFail("allocation", true) ? nullptr : std::malloc(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

#else

extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* memory, std::size_t size);

INTERPOSED void* malloc(std::size_t size) {
  if (!shallFail("allocation", true, __builtin_return_address(0))) return __libc_malloc(size);
  errno = ENOMEM;
  return nullptr;
}
INTERPOSED void* calloc(std::size_t count, std::size_t size) {
  if (!shallFail("allocation", true, __builtin_return_address(0)))
    return __libc_calloc(count, size);
  errno = ENOMEM;
  return nullptr;
}
INTERPOSED void* realloc(void* memory, std::size_t size) {
  if (!shallFail("allocation", true, __builtin_return_address(0)))
    return __libc_realloc(memory, size);
  errno = ENOMEM;
  return nullptr;
}

#endif
// NOLINTEND(*-reserved-identifier,*-dcl37-c,*-vararg,cert-dcl50-cpp,*-no-int-to-ptr)
