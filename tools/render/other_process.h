#pragma once

#include <functional>
#include <sys/types.h>
#include <utility>

#include "host/files/descriptor.h"
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

  OtherProcess(OtherProcess&&) = default;
  ~OtherProcess();

  /// What it drew, once; or its failure. Waits for it.
  host::files::Result<host::images::Bitmap> picture();

 private:
  OtherProcess(pid_t process, host::files::Descriptor result)
      : process_(process), result_(std::move(result)) {}

  pid_t process_;
  host::files::Descriptor result_;
};

}  // namespace tools::render
