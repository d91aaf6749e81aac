#include "watch/drawing.h"

#include <cerrno>
#include <cstdio>
#include <exception>
#include <sys/wait.h>
#include <unistd.h>

#include "exit_status.h"
#include "leave.h"

namespace tools::watch {
namespace {

/// Nothing of the drawing's may go on in this one's main function.
int drawAlone(const std::function<int()>& draw) {
  try {
    return draw();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "prismal watch: %s\n", error.what());
    return kTrouble;
  }
}

}  // namespace

void Drawing::finish() {
  if (!isGoingOn()) return;
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
  process_ = 0;
}

bool Drawing::start(const std::function<int()>& draw) {
  std::fflush(nullptr);
  process_ = fork();
  if (process_ != 0) return process_ > 0;
  leave(drawAlone(draw));
}

std::optional<int> Drawing::takeStatus() {
  int status = 0;
  if (!isGoingOn() || waitpid(process_, &status, WNOHANG) != process_) return std::nullopt;
  process_ = 0;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace tools::watch
