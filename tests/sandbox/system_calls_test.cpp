// The system calls that a sandboxed process has left, each tried in a process of its own.

#include "sandbox/system_calls.h"

#include <cerrno>
#include <functional>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sched.h>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using tools::sandbox::Programs;

/// The errno value with which `call` fails in a filtered process; 0 when it doesn't.
int errorOf(const std::function<long()>& call, Programs programs = Programs::kForbidden) {
  const pid_t process = fork();
  if (process == 0) {
    if (!tools::sandbox::forbidSystemCalls(programs)) _exit(255);
    errno = 0;
    _exit(call() < 0 ? errno : 0);
  }
  int status = 0;
  waitpid(process, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// A socket that is connected, and another that it could send to.
struct Sockets {
  int connected[2] = {-1, -1};
  Sockets() { static_cast<void>(socketpair(AF_UNIX, SOCK_DGRAM, 0, connected)); }
  ~Sockets() {
    for (const int socket : connected) close(socket);
  }
};

TEST(SystemCalls, LeaveWhatDrawingNeedsAndNothingElse) {
  const Sockets sockets;
  sockaddr_in away{};
  away.sin_family = AF_INET;
  const auto sendTo = [&](const void* address, socklen_t size) {
    return syscall(SYS_sendto, sockets.connected[0], "x", 1, MSG_DONTWAIT, address, size);
  };
  char byte = 'x';
  char* const none[] = {nullptr};
  struct Case {
    std::string_view name;
    std::function<long()> call;
    int error;
  };
  const Case cases[] = {
      {"socket", [] { return socket(AF_INET, SOCK_STREAM, 0); }, EPERM},
      {"bind", [&] { return bind(-1, nullptr, 0); }, EPERM},
      {"a connected socket", [&] { return sendTo(nullptr, 0); }, 0},
      {"a socket with an address", [&] { return sendTo(&away, sizeof away); }, EPERM},
      {"a ring", [] { return syscall(SYS_io_uring_setup, 1, nullptr); }, EPERM},
      {"a program", [&] { return execve("/bin/true", none, none); }, EPERM},
      {"a program by descriptor", [&] { return syscall(SYS_execveat, -1, "", none, none, 0); },
       EPERM},
      {"another process", [] { return syscall(SYS_ptrace, 16, getppid(), 0, 0); }, EPERM},
      {"a signal", [] { return kill(getppid(), 0); }, EPERM},
      {"a namespace", [] { return unshare(CLONE_NEWUSER); }, EPERM},
      {"a process with a namespace",
       [] {
         return syscall(SYS_clone, CLONE_NEWUSER | SIGCHLD, nullptr, nullptr, nullptr, nullptr);
       },
       EPERM},
      {"the newer clone", [] { return syscall(SYS_clone3, nullptr, 0); }, ENOSYS},
      {"a process",
       [] {
         const pid_t process = fork();
         if (process == 0) _exit(0);
         return waitpid(process, nullptr, 0);
       },
       0},
      {"typing on the terminal", [&] { return ioctl(-1, TIOCSTI, &byte); }, EPERM},
      {"asking the terminal", [&] { return ioctl(-1, TCGETS, &byte); }, EBADF},
      {"times of a file", [] { return syscall(SYS_utimensat, -1, "x", nullptr, 0); }, EPERM},
      {"another's numbers", [] { return syscall(0x40000000L | SYS_getpid); }, ENOSYS},
      {"reading", [&] { return read(-1, &byte, 1); }, EBADF},
      {"the last number", [] { return syscall(100000); }, ENOSYS},
  };
  for (const Case& c : cases) EXPECT_EQ(errorOf(c.call), c.error) << c.name;
}

TEST(SystemCalls, LeaveProgramsWhereTheyAreAllowed) {
  char* const none[] = {nullptr};
  const auto start = [&] { return execve("/none/such", none, none); };
  EXPECT_EQ(errorOf(start, Programs::kAllowed), ENOENT);
  EXPECT_EQ(errorOf([] { return socket(AF_INET, SOCK_STREAM, 0); }, Programs::kAllowed), EPERM);
}

}  // namespace
