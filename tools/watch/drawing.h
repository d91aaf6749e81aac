#pragma once

#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>

namespace tools::watch {

/// One drawing at a time, each in a process of its own, because the library reads its tables once a
/// process. A drawing that is going on is waited for at the end: it has things to clear away.
class Drawing {
 public:
  Drawing() = default;
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;
  ~Drawing() { finish(); }

  bool isGoingOn() const { return process_ > 0; }
  /// Calls `draw` in a copy of this process, which exits with what it answers. False when none can
  /// be made; only while none is going on.
  bool start(const std::function<int()>& draw);
  /// Waits for the drawing that is going on, if any, and forgets it.
  void finish();
  /// The status with which the drawing has exited, once: none while it goes on, -1 when it died.
  std::optional<int> takeStatus();

 private:
  pid_t process_ = 0;
};

}  // namespace tools::watch
