#pragma once

// Calls of this program that can fail, made to fail: system calls and allocations, its own and
// those of the libraries in it, but for allocations of those that draw.

#include <functional>
#include <optional>
#include <string>

namespace tests {

/// A call that is about to be made.
struct Call {
  const char* name;
  /// The device path of the file that a system call opens, or that its descriptor is of; empty for
  /// an allocation, and for whatever lies outside the device.
  std::string file;
  bool isAllocation() const { return file.empty() && name[0] == 'a'; }
};

/// Runs `work` in a process of its own, which makes a copy of itself at every call that it has not
/// made from there before: in the copy the call fails, once, and `work` goes on. `judge` is asked
/// in each copy at its end what is wrong, with the call that failed; nothing when it is empty.
/// What is wrong anywhere is written to standard error, with the call and who made it.
struct FaultRun {
  std::string device;  ///< the machine's directory of the device
  bool allocations = false;
  bool systemCalls = false;
  /// Only one call of so many.
  unsigned oneOf = 1;
  /// What calls that change files fail with; 0: each with an error of its own.
  int errorOfChanges = 0;
};
struct FaultCount {
  unsigned calls = 0;   ///< that were made to fail
  unsigned faults = 0;  ///< after which something was wrong
};
FaultCount failInTurn(const FaultRun& run, const std::function<void()>& work,
                      const std::function<std::string(const Call&)>& judge);

/// Runs `work` in a process of its own, in which its `nth` call, counted from 0, fails. For work
/// that changes files, of which all copies have the same. `judge` is as above. None when there is
/// no such call; else what is wrong.
std::optional<std::string> failNth(const FaultRun& run, unsigned nth,
                                   const std::function<void()>& work,
                                   const std::function<std::string(const Call&)>& judge);

/// The same with every call failing that changes files.
std::string failChanges(const FaultRun& run, const std::function<void()>& work,
                        const std::function<std::string(const Call&)>& judge);

/// While this lives, calls of this thread are left alone.
class Unharmed {
 public:
  Unharmed();
  Unharmed(const Unharmed&) = delete;
  Unharmed& operator=(const Unharmed&) = delete;
  ~Unharmed();
};

}  // namespace tests
