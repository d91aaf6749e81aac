#pragma once

#include <chrono>
#include <cstddef>

namespace tools::render {

/// A bar on standard error while something takes longer than half a second; never anywhere but on a
/// terminal. Gone when the object goes.
class ProgressBar {
 public:
  /// `total` pieces of work begin now.
  ProgressBar(std::size_t total, bool quiet);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar();

  void show(std::size_t done);

 private:
  std::size_t total_;
  bool allowed_;
  bool shown_ = false;
  std::chrono::steady_clock::time_point start_;
};

}  // namespace tools::render
