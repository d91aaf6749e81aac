#include "confinement.h"

#include <cstdint>
#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "host/files/descriptor.h"

namespace tests {

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

}  // namespace

bool confineWritingTo(const char* directory) {
  landlock_ruleset_attr attributes{};
  attributes.handled_access_fs = kWriting;
  const Descriptor rules(
      static_cast<int>(::syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0)));
  return rules && allow(rules, directory, kWriting) && allow(rules, "/dev/null", kWritingFiles) &&
         ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         ::syscall(SYS_landlock_restrict_self, rules.get(), 0) == 0;
}

bool becomeNobody() {
  constexpr unsigned kNobody = 65534;
  return ::geteuid() != 0 || (::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
}

}  // namespace tests
