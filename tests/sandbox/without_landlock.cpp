// Runs a command on a kernel that has no Landlock, or so it looks to the command.

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

int main(int argc, char** argv) {
  sock_filter steps[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                         BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_landlock_create_ruleset, 0, 1),
                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
  sock_fprog filter{.len = static_cast<unsigned short>(std::size(steps)), .filter = steps};
  if (argc < 2 || prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, 0, &filter) != 0) {
    std::perror("without_landlock");
    return 1;
  }
  execv(argv[1], argv + 1);
  std::perror(argv[1]);
  return 127;
}
