#pragma once

#include <functional>
#include <utility>

#include "child_process.h"
#include "host/files/result.h"
#include "host/images/bitmap.h"

namespace tools::render {

/// A picture that another process draws meanwhile, because a process has one keyboard and one
/// dress.
class OtherProcess {
 public:
  using Draw = std::function<host::files::Result<host::images::Bitmap>()>;

  /// Calls `draw` in a copy of this process, which ends with it. To be started before this process
  /// has threads or a keyboard of its own.
  static host::files::Result<OtherProcess> start(const Draw& draw);

  /// What it drew, once; or its failure. Waits for it.
  host::files::Result<host::images::Bitmap> picture();

 private:
  explicit OtherProcess(ChildProcess process) : process_(std::move(process)) {}

  ChildProcess process_;
};

}  // namespace tools::render
