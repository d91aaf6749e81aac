#pragma once

#include <cstdint>

#include "host/files/descriptor.h"
#include "host/files/result.h"

namespace tools::sandbox {

/// What a process may still do with a file, or with all that lies in and below a directory.
enum class Access : std::uint8_t { kRead, kReadAndWrite, kReadAndExecute };

/// Rules for the files that this process, and whatever it starts, may still open: Landlock's. Each
/// set that is enforced takes away; none gives back. What is open already stays open. Names, sizes
/// and times of files can be seen whatever the rules are.
class FileRules {
 public:
  /// Whether the kernel has Landlock and lets this process use it.
  static bool areOffered();

  /// Rules under which nothing can be opened, nor made, moved or removed.
  static host::files::Result<FileRules> forbidAll();

  /// Exempts what `place`, a descriptor that may be O_PATH, stands for.
  void allow(int place, Access access) const;
  /// Exempts what stands at `path` of this machine now; where nothing does, nothing is exempted.
  void allow(const char* path, Access access) const;

  /// From now on, for this thread and those that it starts, until the end. Takes the way to new
  /// rights through programs (set-user-ID and the like), too.
  host::files::Result<host::files::Done> enforce() const;

 private:
  FileRules(host::files::Descriptor rules, std::uint64_t handled)
      : rules_(std::move(rules)), handled_(handled) {}

  host::files::Descriptor rules_;
  std::uint64_t handled_;  // the rights that this kernel knows of
};

}  // namespace tools::sandbox
