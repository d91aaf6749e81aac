#include "sandbox/system_calls.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <initializer_list>
#include <iterator>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/fs.h>
#include <linux/fsverity.h>
#include <linux/seccomp.h>
#include <linux/sockios.h>
#include <sched.h>
#include <span>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace tools::sandbox {

using host::files::Done;
using host::files::Result;

namespace {

// Numbers that the headers this is built with may lack; they are the same everywhere.
constexpr long kQuotaOfFile = 443;
constexpr long kReleaseMemory = 448;
constexpr long kSetXattrAt = 463;
constexpr long kRemoveXattrAt = 466;
constexpr long kOpenTreeAttr = 467;
constexpr long kSetFileAttr = 469;

// A new way to do one of these that isn't listed here is met by the rules for files, and by the
// lack of rights that a plain user has.
constexpr long kForbidden[] = {
    // The network, and sockets of this machine. A ring does what a filter can't see.
    SYS_socket,
    SYS_socketpair,
    SYS_connect,
    SYS_bind,
    SYS_listen,
    SYS_accept,
    SYS_accept4,
    SYS_sendmsg,
    SYS_sendmmsg,
    SYS_io_uring_setup,
    SYS_io_uring_enter,
    SYS_io_uring_register,
    // Other processes.
    SYS_kill,
    SYS_tkill,
    SYS_rt_sigqueueinfo,
    SYS_rt_tgsigqueueinfo,
    SYS_pidfd_open,
    SYS_pidfd_send_signal,
    SYS_pidfd_getfd,
    SYS_ptrace,
    SYS_process_vm_readv,
    SYS_process_vm_writev,
    SYS_process_madvise,
    kReleaseMemory,
    SYS_kcmp,
    SYS_migrate_pages,
    SYS_move_pages,
    SYS_shmget,
    SYS_shmat,
    SYS_shmctl,
    SYS_msgget,
    SYS_msgsnd,
    SYS_msgrcv,
    SYS_msgctl,
    SYS_semget,
    SYS_semop,
    SYS_semtimedop,
    SYS_semctl,
    SYS_mq_open,
    SYS_mq_unlink,
    // What rules for files don't rule: whose a file is and who may use it.
    SYS_fchmodat,
    SYS_fchown,
    SYS_fchownat,
    SYS_utimensat,
    SYS_setxattr,
    SYS_lsetxattr,
    SYS_fsetxattr,
    SYS_removexattr,
    SYS_lremovexattr,
    SYS_fremovexattr,
    kSetXattrAt,
    kRemoveXattrAt,
    kSetFileAttr,
    SYS_open_by_handle_at,
#ifdef SYS_chmod
    SYS_chmod,
    SYS_chown,
    SYS_lchown,
    SYS_utime,
    SYS_utimes,
    SYS_futimesat,
#endif
#ifdef SYS_fchmodat2
    SYS_fchmodat2,
#endif
    // The machine, for those who draw with the rights of root.
    SYS_mount,
    SYS_umount2,
    SYS_pivot_root,
    SYS_chroot,
    SYS_open_tree,
    kOpenTreeAttr,
    SYS_move_mount,
    SYS_fsopen,
    SYS_fsconfig,
    SYS_fspick,
    SYS_fsmount,
    SYS_mount_setattr,
    SYS_unshare,
    SYS_setns,
    SYS_bpf,
    SYS_perf_event_open,
    SYS_userfaultfd,
    SYS_keyctl,
    SYS_add_key,
    SYS_request_key,
    SYS_init_module,
    SYS_finit_module,
    SYS_delete_module,
    SYS_kexec_load,
#ifdef SYS_kexec_file_load
    SYS_kexec_file_load,
#endif
    SYS_reboot,
    SYS_swapon,
    SYS_swapoff,
    SYS_acct,
    SYS_quotactl,
    kQuotaOfFile,
    SYS_settimeofday,
    SYS_clock_settime,
    SYS_adjtimex,
    SYS_clock_adjtime,
    SYS_sethostname,
    SYS_setdomainname,
    SYS_syslog,
    SYS_vhangup,
#ifdef SYS_iopl
    SYS_iopl,
    SYS_ioperm,
#endif
};

/// Programs that have no path, which rules for files can't rule.
constexpr long kStartingUnnamed[] = {SYS_memfd_create, SYS_execveat};

/// All that are forbidden, in the order of their numbers.
std::vector<std::uint32_t> forbidden(Programs programs) {
  std::vector<std::uint32_t> calls(std::begin(kForbidden), std::end(kForbidden));
  calls.insert(calls.end(), std::begin(kStartingUnnamed), std::end(kStartingUnnamed));
  if (programs == Programs::kForbidden) calls.push_back(SYS_execve);
  std::ranges::sort(calls);
  return calls;
}

constexpr std::uint32_t kNewNamespaces = CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS |
                                         CLONE_NEWIPC | CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET;

#if defined(__x86_64__)
constexpr std::uint32_t kArchitecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t kArchitecture = AUDIT_ARCH_AARCH64;
#else
#error "which architecture the kernel calls this one, see linux/audit.h"
#endif

/// The filter, as the kernel's small machine for packets runs it: at each system call, from the
/// top.
class Filter {
 public:
  explicit Filter(Programs programs) {
    // Another architecture's calls have other numbers, and those above are another's on x86.
    load(offsetof(seccomp_data, arch));
    when(BPF_JEQ, kArchitecture, {refusal(ENOSYS)}, false);
    load(offsetof(seccomp_data, nr));
    constexpr std::uint32_t kOtherNumbers = 0x40000000;
    when(BPF_JGE, kOtherNumbers, {refusal(ENOSYS)});
    // Its flags lie where a filter can't look; who misses it asks with the older call.
    when(BPF_JEQ, SYS_clone3, {refusal(ENOSYS)});
    judge(SYS_clone, 0, BPF_JSET, kNewNamespaces);
    // What would be read from the terminal as if it had been typed.
    judge(SYS_ioctl, 1, BPF_JEQ, TIOCSTI);
    judge(SYS_ioctl, 1, BPF_JEQ, TIOCLINUX);
    leaveWhoMayUseFiles();
    leaveOtherProcesses(static_cast<std::uint32_t>(::getpid()));
    // Connected sockets need no address: the machine's log is one.
    judgeHalves(SYS_sendto, 4);
    search(forbidden(programs));
  }

  sock_fprog program() {
    return {.len = static_cast<unsigned short>(steps_.size()), .filter = steps_.data()};
  }

 private:
  using Steps = std::vector<sock_filter>;

  static constexpr sock_filter verdict(std::uint32_t answer) {
    return BPF_STMT(BPF_RET | BPF_K, answer);
  }
  static constexpr sock_filter refusal(std::uint32_t error) {
    return verdict(SECCOMP_RET_ERRNO | error);
  }
  /// On, leaving out as many steps as are given for a test that is passed and for one that fails.
  static constexpr sock_filter jump(unsigned test, std::uint32_t value, std::uint8_t passed,
                                    std::uint8_t failed) {
    return BPF_JUMP(static_cast<std::uint16_t>(BPF_JMP | test | BPF_K), value, passed, failed);
  }
  static constexpr sock_filter loading(std::size_t offset) {
    return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
  }
  /// Where the lower half of an argument lies; the upper one is 4 bytes further: both architectures
  /// put the lower one first.
  static constexpr std::size_t argument(std::size_t index) {
    return offsetof(seccomp_data, args) + index * sizeof(std::uint64_t);
  }

  /// What rules for files leave alone may not be changed through an open file either.
  void leaveWhoMayUseFiles() {
    // New files of a device are made so, whatever the umask is.
    constexpr std::uint32_t kModeOfNewFiles = 0644;
    restrict(SYS_fchmod, 1, {kModeOfNewFiles});
    for (const std::uint64_t request :
         {FS_IOC_SETFLAGS, FS_IOC_FSSETXATTR, FS_IOC_SETVERSION, FS_IOC_ENABLE_VERITY}) {
      judge(SYS_ioctl, 1, BPF_JEQ, static_cast<std::uint32_t>(request));
    }
  }
  /// What may be done to a process is left for this one.
  void leaveOtherProcesses(std::uint32_t self) {
    for (const long call : {SYS_prlimit64, SYS_sched_setaffinity, SYS_sched_setscheduler,
                            SYS_sched_setparam, SYS_sched_setattr}) {
      restrict(call, 0, {0, self});
    }
    constexpr std::uint32_t kIoOfProcess = 1;  // IOPRIO_WHO_PROCESS, which no header has
    restrict(SYS_setpriority, 0, {PRIO_PROCESS});
    restrict(SYS_setpriority, 1, {0, self});
    restrict(SYS_ioprio_set, 0, {kIoOfProcess});
    restrict(SYS_ioprio_set, 1, {0, self});
    restrict(SYS_tgkill, 0, {self});
    // Whom the kernel signals when a descriptor is ready, and with what.
    for (const int command : {F_SETOWN, F_SETOWN_EX, F_SETSIG}) {
      judge(SYS_fcntl, 1, BPF_JEQ, static_cast<std::uint32_t>(command));
    }
    for (const int request : {FIOSETOWN, SIOCSPGRP}) {
      judge(SYS_ioctl, 1, BPF_JEQ, static_cast<std::uint32_t>(request));
    }
  }

  void add(sock_filter step) { steps_.push_back(step); }
  void load(std::size_t offset) { add(loading(offset)); }

  /// `steps` when what is loaded passes the test, or fails it, and on behind them otherwise.
  void when(unsigned test, std::uint32_t value, const Steps& steps, bool passes = true) {
    const auto behind = static_cast<std::uint8_t>(steps.size());
    add(jump(test, value, passes ? 0 : behind, passes ? behind : 0));
    append(steps_, steps);
  }

  /// The verdict on a call, found by halves: the kernel runs the filter for every call that there
  /// is when it is installed.
  void search(std::span<const std::uint32_t> calls) { append(steps_, searching(calls)); }

  static Steps searching(std::span<const std::uint32_t> calls) {
    if (calls.size() == 1) {
      return {jump(BPF_JEQ, calls[0], 0, 1), refusal(EPERM), verdict(SECCOMP_RET_ALLOW)};
    }
    const auto below = searching(calls.first(calls.size() / 2));
    const auto above = calls.subspan(calls.size() / 2);
    Steps steps = {jump(BPF_JGE, above[0], static_cast<std::uint8_t>(below.size()), 0)};
    append(steps, below);
    append(steps, searching(above));
    return steps;
  }
  // A call makes 3 steps, a parting 1, and a jump leads over 255 at most.
  static_assert(std::size(kForbidden) + std::size(kStartingUnnamed) + 1 <= 2 * 255 / 4);

  static void append(Steps& steps, const Steps& more) {
    steps.insert(steps.end(), more.begin(), more.end());
  }

  /// Refuses `call` when the lower half of an argument passes the test. The call's number is loaded
  /// before and behind.
  void judge(long call, std::size_t index, unsigned test, std::uint32_t value) {
    when(BPF_JEQ, static_cast<std::uint32_t>(call),
         {loading(argument(index)), jump(test, value, 0, 1), refusal(EPERM),
          loading(offsetof(seccomp_data, nr))});
  }
  /// Refuses `call` unless the lower half of an argument is one of `values`.
  void restrict(long call, std::size_t index, std::initializer_list<std::uint32_t> values) {
    Steps steps = {loading(argument(index))};
    auto behind = static_cast<std::uint8_t>(values.size());
    for (const std::uint32_t value : values) steps.push_back(jump(BPF_JEQ, value, behind--, 0));
    steps.push_back(refusal(EPERM));
    steps.push_back(loading(offsetof(seccomp_data, nr)));
    when(BPF_JEQ, static_cast<std::uint32_t>(call), steps);
  }
  /// Refuses `call` when any bit of an argument is set.
  void judgeHalves(long call, std::size_t index) {
    constexpr std::uint32_t kAnyBit = 0xffffffff;
    when(BPF_JEQ, static_cast<std::uint32_t>(call),
         {loading(argument(index)), jump(BPF_JSET, kAnyBit, 2, 0),
          loading(argument(index) + sizeof(std::uint32_t)), jump(BPF_JSET, kAnyBit, 0, 1),
          refusal(EPERM), loading(offsetof(seccomp_data, nr))});
  }

  Steps steps_;
};

long seccomp(unsigned operation, unsigned flags, void* argument) {
  return ::syscall(SYS_seccomp, operation, flags, argument);
}

}  // namespace

bool isFilterOffered() {
  std::uint32_t answer = SECCOMP_RET_ERRNO;
  return seccomp(SECCOMP_GET_ACTION_AVAIL, 0, &answer) == 0;
}

Result<Done> forbidSystemCalls(Programs programs) {
  Filter filter(programs);
  sock_fprog program = filter.program();
  if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return host::files::lastFailure();
  // Older kernels slow a filtered process down against guesses at what is in it; nothing of anybody
  // else's is in this one.
  if (seccomp(SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_SPEC_ALLOW, &program) != 0) {
    return host::files::lastFailure();
  }
  return Done();
}

}  // namespace tools::sandbox
