#pragma once

#include <functional>

#include "child_process.h"
#include "host/files/descriptor.h"
#include "host/files/result.h"

namespace tools {

/// A copy of this process that stays behind when this one enters a sandbox, for what is to be done
/// outside in the end. It waits; only what was decided before it was made can be asked of it.
class OuterProcess {
 public:
  /// What the copy does: `finish` if it is asked to, and `clearAway` in any case, also when this
  /// process is killed.
  struct Work {
    std::function<host::files::Result<host::files::Done>()> finish;
    std::function<void()> clearAway;
  };

  /// To be started before this process has threads.
  static host::files::Result<OuterProcess> start(const Work& work);

  /// Has it finished and cleared away, once. Waits for it.
  host::files::Result<host::files::Done> finish();

 private:
  OuterProcess(ChildProcess process, host::files::Descriptor asking)
      : process_(std::move(process)), asking_(std::move(asking)) {}

  ChildProcess process_;
  host::files::Descriptor asking_;  // goes first: the process ends by that
};

}  // namespace tools
