// The system calls that a sandboxed process has left, each tried in a process of its own.

#include "sandbox/system_calls.h"

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <linux/fs.h>
#include <linux/fsverity.h>
#include <linux/sockios.h>
#include <netinet/in.h>
#include <sched.h>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
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

TEST(SystemCalls, LeaveNoOtherProcessToBeReached) {
  // The kernel's own answer would be another error or none: the calls name nothing that is there,
  // or the test's process.
  const auto other = [] { return static_cast<long>(getppid()); };
  char byte = 0;
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  struct Case {
    std::string_view name;
    std::function<long()> call;
  };
  const Case cases[] = {
      {"limits", [&] { return syscall(SYS_prlimit64, other(), RLIMIT_NOFILE, &limit, nullptr); }},
      {"processors", [&] { return syscall(SYS_sched_setaffinity, other(), 1, &byte); }},
      {"scheduler", [&] { return syscall(SYS_sched_setscheduler, other(), 0, nullptr); }},
      {"its parameters", [&] { return syscall(SYS_sched_setparam, other(), nullptr); }},
      {"its attributes", [&] { return syscall(SYS_sched_setattr, other(), nullptr, 0); }},
      {"priority", [&] { return syscall(SYS_setpriority, PRIO_PROCESS, other(), 0); }},
      {"a group's priority", [] { return syscall(SYS_setpriority, PRIO_PGRP, 0, 0); }},
      {"a user's priority", [] { return syscall(SYS_setpriority, PRIO_USER, 0, 0); }},
      {"order of its reading", [&] { return syscall(SYS_ioprio_set, 1, other(), 0); }},
      {"a user's order", [] { return syscall(SYS_ioprio_set, 3, 0, 0); }},
      {"a signal to a thread", [&] { return syscall(SYS_tgkill, other(), other(), 0); }},
      {"an owner", [] { return fcntl(0, F_SETOWN, 0); }},
      {"an owner with its kind", [] { return fcntl(0, F_SETOWN_EX, nullptr); }},
      {"an owner's signal", [] { return fcntl(0, F_SETSIG, 0); }},
      {"a socket's owner", [&] { return ioctl(0, FIOSETOWN, &byte); }},
      {"a socket's group", [&] { return ioctl(0, SIOCSPGRP, &byte); }},
      {"shared memory", [] { return syscall(SYS_shmctl, -1, 0, nullptr); }},
      {"a message sent", [] { return syscall(SYS_msgsnd, -1, nullptr, 0, 0); }},
      {"a message", [] { return syscall(SYS_msgrcv, -1, nullptr, 0, 0, 0); }},
      {"a queue", [] { return syscall(SYS_msgctl, -1, 0, nullptr); }},
      {"a semaphore", [] { return syscall(SYS_semop, -1, nullptr, 0); }},
      {"a semaphore for a while", [] { return syscall(SYS_semtimedop, -1, nullptr, 0, nullptr); }},
      {"semaphores", [] { return syscall(SYS_semctl, -1, 0, 0); }},
      {"a named queue", [] { return syscall(SYS_mq_unlink, "none"); }},
      {"its pages", [] { return syscall(SYS_move_pages, -1, 0, nullptr, nullptr, nullptr, 0); }},
      {"all its pages", [] { return syscall(SYS_migrate_pages, -1, 0, nullptr, nullptr); }},
      {"what it shares", [&] { return syscall(SYS_kcmp, other(), other(), 0, 0, 0); }},
      {"the clock", [] { return syscall(SYS_clock_adjtime, -1, nullptr); }},
      {"a kernel", [] { return syscall(SYS_kexec_file_load, -1, -1, 0, nullptr, 0); }},
      {"attributes of a file", [] { return syscall(463, -1, "", 0, "", nullptr, 0); }},
  };
  for (const Case& c : cases) EXPECT_EQ(errorOf(c.call), EPERM) << c.name;
}

TEST(SystemCalls, LeaveOpenFilesTheirModesAndFlags) {
  char byte = 0;
  EXPECT_EQ(errorOf([] { return fchmod(-1, 0777); }), EPERM);
  EXPECT_EQ(errorOf([] { return fchmod(-1, 04644); }), EPERM);
  // So new files of a device are made.
  EXPECT_EQ(errorOf([] { return fchmod(-1, 0644); }), EBADF);
  for (const unsigned long request :
       {FS_IOC_SETFLAGS, FS_IOC_FSSETXATTR, FS_IOC_SETVERSION, FS_IOC_ENABLE_VERITY}) {
    EXPECT_EQ(errorOf([&] { return ioctl(-1, request, &byte); }), EPERM) << request;
  }
  EXPECT_EQ(errorOf([&] { return ioctl(-1, FS_IOC_GETFLAGS, &byte); }), EBADF);
}

TEST(SystemCalls, LeaveAProcessItsOwnLimitsAndSignals) {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  cpu_set_t processors;
  sched_getaffinity(0, sizeof processors, &processors);
  // The filter knows the number of the process that enters it.
  for (const bool byNumber : {false, true}) {
    const auto self = [&] { return byNumber ? static_cast<long>(getpid()) : 0L; };
    EXPECT_EQ(
        errorOf([&] { return syscall(SYS_prlimit64, self(), RLIMIT_NOFILE, &limit, nullptr); }), 0);
    EXPECT_EQ(errorOf([&] {
                return syscall(SYS_sched_setaffinity, self(), sizeof processors, &processors);
              }),
              0);
    EXPECT_EQ(errorOf([&] { return syscall(SYS_setpriority, PRIO_PROCESS, self(), 19); }), 0);
  }
  EXPECT_EQ(errorOf([] { return syscall(SYS_tgkill, getpid(), getpid(), 0); }), 0);
  EXPECT_EQ(errorOf([] { return fcntl(1, F_GETFD); }), 0);
}

TEST(SystemCalls, LeaveProgramsWhereTheyAreAllowed) {
  char* const none[] = {nullptr};
  const auto start = [&] { return execve("/none/such", none, none); };
  EXPECT_EQ(errorOf(start, Programs::kAllowed), ENOENT);
  // Not such as have no path.
  EXPECT_EQ(errorOf([] { return memfd_create("x", 0); }, Programs::kAllowed), EPERM);
  const auto unnamed = [&] { return syscall(SYS_execveat, -1, "", none, none, 0); };
  EXPECT_EQ(errorOf(unnamed, Programs::kAllowed), EPERM);
  EXPECT_EQ(errorOf([] { return socket(AF_INET, SOCK_STREAM, 0); }, Programs::kAllowed), EPERM);
}

}  // namespace
