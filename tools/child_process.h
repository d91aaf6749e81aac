#pragma once

#include <functional>
#include <string>
#include <sys/types.h>
#include <utility>

#include "host/files/descriptor.h"
#include "host/files/result.h"

namespace tools {

/// A copy of this process that makes some bytes meanwhile, because a process has one keyboard and
/// one dress.
class ChildProcess {
 public:
  using Work = std::function<host::files::Result<std::string>()>;

  /// Calls `work` in a copy of this process, which ends with it. To be started before this process
  /// has threads or a keyboard of its own.
  static host::files::Result<ChildProcess> start(const Work& work);

  ChildProcess(ChildProcess&&) = default;
  ~ChildProcess();

  /// What it made, once; or its failure, which is ECHILD when it died. Waits for it.
  host::files::Result<std::string> bytes();

 private:
  ChildProcess(pid_t process, host::files::Descriptor result)
      : process_(process), result_(std::move(result)) {}

  pid_t process_;
  host::files::Descriptor result_;
};

}  // namespace tools
