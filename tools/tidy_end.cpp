#include "tidy_end.h"

#include <csignal>

#include "host/files/leftovers.h"

namespace tools {

void endTidily() {
  struct sigaction tidy {};
  tidy.sa_handler = [](int signal) {
    host::files::removeLeftovers();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
  };
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(signal, &tidy, nullptr);
  }
}

}  // namespace tools
