// These tests remove what a device path names, `/` included. Should the code under test ever
// resolve one outside its device root, the kernel must stand between it and the machine: before any
// test runs, this process gives up writing anywhere but in a temporary directory of its own.

#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <iostream>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/files/descriptor.h"
#include "host/files/temporary_directory.h"

namespace {

using host::files::Descriptor;

constexpr std::uint64_t kWritingFiles = LANDLOCK_ACCESS_FS_WRITE_FILE;
constexpr std::uint64_t kWriting =
    kWritingFiles | LANDLOCK_ACCESS_FS_REMOVE_DIR | LANDLOCK_ACCESS_FS_REMOVE_FILE |
    LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG |
    LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO | LANDLOCK_ACCESS_FS_MAKE_BLOCK |
    LANDLOCK_ACCESS_FS_MAKE_SYM | LANDLOCK_ACCESS_FS_REFER;

bool allow(const Descriptor& rules, const char* path, std::uint64_t access) {
  const Descriptor where(::open(path, O_PATH | O_CLOEXEC));
  landlock_path_beneath_attr rule{};
  rule.allowed_access = access;
  rule.parent_fd = where.get();
  return where &&
         ::syscall(SYS_landlock_add_rule, rules.get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == 0;
}

bool confineWritingTo(const char* directory) {
  landlock_ruleset_attr attributes{};
  attributes.handled_access_fs = kWriting;
  const Descriptor rules(
      static_cast<int>(::syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0)));
  return rules && allow(rules, directory, kWriting) && allow(rules, "/dev/null", kWritingFiles) &&
         ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         ::syscall(SYS_landlock_restrict_self, rules.get(), 0) == 0;
}

/// Where the kernel offers no confinement, nobody's rights are the next best; but for root, who
/// has rights to lose, there is nothing to do.
bool becomeNobody() {
  constexpr unsigned kNobody = 65534;
  return ::geteuid() != 0 || (::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
}

TEST(Confinement, KeepsTheseTestsFromWritingElsewhere) {
  EXPECT_NE(::mkdir("/prismal-test", 0700), 0);
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // The tests run in a child, so that somebody is left who may remove the directory.
  const host::files::TemporaryDirectory directory;
  const pid_t child = ::fork();
  if (child == 0) {
    if (confineWritingTo(directory.path().c_str())) {
      ::setenv("TMPDIR", directory.path().c_str(), 1);
    } else if (!becomeNobody()) {
      std::cerr << "These tests must not run with the rights of root.\n";
      std::_Exit(1);
    }
    std::exit(RUN_ALL_TESTS());
  }
  int status = 1;
  if (child < 0 || ::waitpid(child, &status, 0) < 0) return 1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
