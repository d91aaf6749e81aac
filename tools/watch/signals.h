#pragma once

#include <csignal>

#include "host/files/descriptor.h"

namespace tools::watch {

/// While this lives, signals that ask the program to end, and those that tell of a child's end, are
/// read from a descriptor in place of being delivered. Children that are forked meanwhile are not
/// ended by them either. Main thread only.
class Signals {
 public:
  Signals();
  Signals(const Signals&) = delete;
  Signals& operator=(const Signals&) = delete;
  ~Signals();

  /// Can be read when a signal has come.
  int descriptor() const { return signals_.get(); }
  /// Takes the signals that have come; whether one of them asks the program to end.
  bool takeEnd();

 private:
  sigset_t before_{};
  host::files::Descriptor signals_;
};

}  // namespace tools::watch
