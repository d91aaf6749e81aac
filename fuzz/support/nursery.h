#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "host/files/descriptor.h"

namespace fuzz {

/// Does work in processes of their own, one for each input. They are forked from a process that is
/// forked once, when this is made, and does nothing else: it stays small, while an engine grows,
/// and a fork takes the longer the more memory there is.
class Nursery {
 public:
  struct Duties {
    /// In the process that forks, before the first input.
    std::function<void()> prepare;
    /// In a process of its own.
    std::function<void(std::string_view input)> work;
    /// In the process that forks, after each input.
    std::function<void()> tidy;
    /// There, too, at the end.
    std::function<void()> leave;
  };

  explicit Nursery(const Duties& duties);

  /// Has the work done for `input`, of at most kMostBytes, and waits. What the engine has counted
  /// of the code that ran counts here. Work that does not come to its end is a finding, and so is,
  /// outside the engine, work that leaks.
  void run(std::string_view input);

  static constexpr std::size_t kMostBytes = 1 << 20;

 private:
  struct Shared;
  [[noreturn]] void serve(const Duties& duties);
  [[noreturn]] void work(const Duties& duties);

  Shared* shared_;
  host::files::Descriptor requests_;  // of this process: its end
  host::files::Descriptor answers_;
};

}  // namespace fuzz
