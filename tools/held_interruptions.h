#pragma once

#include <array>
#include <csignal>

namespace tools {

/// While this lives, a signal that asks the program to end (SIGINT, SIGTERM, SIGHUP) is noted
/// rather than obeyed at once, so that there is time to clean up; calls that wait return with
/// EINTR. At its end the program ends by the signal that came. One at a time; main thread only.
class HeldInterruptions {
 public:
  HeldInterruptions();
  HeldInterruptions(const HeldInterruptions&) = delete;
  HeldInterruptions& operator=(const HeldInterruptions&) = delete;
  ~HeldInterruptions();

  /// Whether such a signal has come.
  static bool came();
  /// Obeys them again: for a child process that cleans up nothing.
  void release() const;

 private:
  static constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};
  std::array<struct sigaction, kSignals.size()> before_{};
};

}  // namespace tools
