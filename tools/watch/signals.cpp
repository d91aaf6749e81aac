#include "watch/signals.h"

#include <sys/signalfd.h>
#include <unistd.h>

namespace tools::watch {

using host::files::Descriptor;

Signals::Signals() {
  sigset_t held;
  sigemptyset(&held);
  for (const int signal : {SIGINT, SIGTERM, SIGCHLD}) sigaddset(&held, signal);
  struct sigaction hangUp {};
  sigaction(SIGHUP, nullptr, &hangUp);
  if (hangUp.sa_handler != SIG_IGN) sigaddset(&held, SIGHUP);
  sigprocmask(SIG_BLOCK, &held, &before_);
  signals_ = Descriptor(signalfd(-1, &held, SFD_NONBLOCK | SFD_CLOEXEC));
}

Signals::~Signals() {
  sigprocmask(SIG_SETMASK, &before_, nullptr);
}

bool Signals::takeEnd() {
  bool end = false;
  signalfd_siginfo signal{};
  while (::read(signals_.get(), &signal, sizeof signal) == sizeof signal) {
    end = end || signal.ssi_signo != SIGCHLD;
  }
  return end;
}

}  // namespace tools::watch
