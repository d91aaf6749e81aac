#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "theme/limits.h"

namespace tools::theme {

/// Lines that tell of what is missing: the first of them, and how many there are besides.
class Complaints {
 public:
  void add(std::string line) {
    if (lines_.size() < kMaxComplaints) {
      lines_.push_back(std::move(line));
    } else {
      ++untold_;
    }
  }

  /// `about` is what the line on all others begins with. Once.
  std::vector<std::string> take(const std::string& about) {
    if (untold_ > 0) lines_.push_back(about + ": " + std::to_string(untold_) + " more like these");
    return std::move(lines_);
  }

 private:
  std::vector<std::string> lines_;
  std::size_t untold_ = 0;
};

}  // namespace tools::theme
