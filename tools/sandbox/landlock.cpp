#include "sandbox/landlock.h"

#include <algorithm>
#include <fcntl.h>
#include <iterator>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace tools::sandbox {

using host::files::Descriptor;
using host::files::Done;
using host::files::Result;

namespace {

// The kernel that runs this may be newer than the headers that it is built with.
constexpr std::uint64_t kTruncate = std::uint64_t{1} << 14U;
constexpr std::uint64_t kDeviceControl = std::uint64_t{1} << 15U;
constexpr std::uint64_t kBindTcp = 1;
constexpr std::uint64_t kConnectTcp = 2;
constexpr std::uint64_t kAbstractSockets = 1;
constexpr std::uint64_t kSignals = 2;

/// landlock_ruleset_attr of today. A kernel that knows less of it takes it as long as the rest is
/// 0.
struct Attributes {
  std::uint64_t files = 0;
  std::uint64_t network = 0;
  std::uint64_t scoped = 0;
};

struct Version {
  int number;
  Attributes adds;
};

constexpr Version kVersions[] = {
    {1, {.files = 2 * LANDLOCK_ACCESS_FS_MAKE_SYM - 1}},
    {2, {.files = LANDLOCK_ACCESS_FS_REFER}},
    {3, {.files = kTruncate}},
    {4, {.network = kBindTcp | kConnectTcp}},
    {5, {.files = kDeviceControl}},
    {6, {.scoped = kAbstractSockets | kSignals}},
};
static_assert(std::ranges::is_sorted(kVersions, {}, &Version::number));

constexpr std::uint64_t kReading = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr std::uint64_t kWriting = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                                   LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_DIR |
                                   LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SYM |
                                   LANDLOCK_ACCESS_FS_REFER | kTruncate;
constexpr std::uint64_t kOfFiles = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_WRITE_FILE |
                                   LANDLOCK_ACCESS_FS_EXECUTE | kTruncate;

constexpr std::uint64_t rightsOf(Access access) {
  switch (access) {
    case Access::kRead:
      return kReading;
    case Access::kReadAndWrite:
      return kReading | kWriting;
    case Access::kReadAndExecute:
      return kReading | LANDLOCK_ACCESS_FS_EXECUTE;
  }
  return 0;
}

/// The version of the rules that the kernel offers; below 1, none.
int offeredVersion() {
  return static_cast<int>(
      ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION));
}

/// All that a kernel of this version can forbid.
Attributes allOf(int version) {
  Attributes all;
  for (const Version& known : kVersions) {
    if (known.number > version) break;
    all.files |= known.adds.files;
    all.network |= known.adds.network;
    all.scoped |= known.adds.scoped;
  }
  return all;
}

}  // namespace

bool FileRules::areOffered() {
  return offeredVersion() >= 1;
}

Result<FileRules> FileRules::forbidAll() {
  const Attributes all = allOf(offeredVersion());
  Descriptor rules(static_cast<int>(::syscall(SYS_landlock_create_ruleset, &all, sizeof all, 0)));
  if (!rules) return host::files::lastFailure();
  return FileRules(std::move(rules), all.files);
}

void FileRules::allow(int place, Access access) const {
  struct stat status {};
  if (::fstat(place, &status) != 0) return;
  landlock_path_beneath_attr rule{};
  rule.allowed_access =
      rightsOf(access) & handled_ & (S_ISDIR(status.st_mode) ? ~std::uint64_t{0} : kOfFiles);
  rule.parent_fd = place;
  // What isn't exempted is forbidden, and whoever needs it says so.
  ::syscall(SYS_landlock_add_rule, rules_.get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
}

void FileRules::allow(const char* path, Access access) const {
  if (const Descriptor place(::open(path, O_PATH | O_CLOEXEC)); place) allow(place.get(), access);
}

Result<Done> FileRules::enforce() const {
  if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      ::syscall(SYS_landlock_restrict_self, rules_.get(), 0) != 0) {
    return host::files::lastFailure();
  }
  return Done();
}

}  // namespace tools::sandbox
