#include "render/progress_bar.h"

#include <cstdio>
#include <string>
#include <unistd.h>

namespace tools::render {

ProgressBar::ProgressBar(std::size_t total, bool quiet)
    : total_(total),
      allowed_(!quiet && total > 1 && isatty(STDERR_FILENO) != 0),
      start_(std::chrono::steady_clock::now()) {}

ProgressBar::~ProgressBar() {
  if (shown_) std::fputs("\r\x1b[K", stderr);
}

void ProgressBar::show(std::size_t done) {
  constexpr std::size_t kWidth = 30;
  if (!allowed_) return;
  if (!shown_ && std::chrono::steady_clock::now() - start_ < std::chrono::milliseconds(500)) return;
  shown_ = true;
  const std::size_t filled = done * kWidth / total_;
  const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
  std::fprintf(stderr, "\r[%s] %zu of %zu", bar.c_str(), done, total_);
  std::fflush(stderr);
}

}  // namespace tools::render
