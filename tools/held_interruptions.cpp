#include "held_interruptions.h"

#include <cstddef>

namespace tools {
namespace {

volatile std::sig_atomic_t interruption = 0;

}  // namespace

HeldInterruptions::HeldInterruptions() {
  struct sigaction note {};
  note.sa_handler = [](int signal) { interruption = signal; };
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], nullptr, &before_[i]);
    if (before_[i].sa_handler != SIG_IGN) sigaction(kSignals[i], &note, nullptr);
  }
}

HeldInterruptions::~HeldInterruptions() {
  release();
  if (came()) std::raise(interruption);
}

bool HeldInterruptions::came() {
  return interruption != 0;
}

void HeldInterruptions::release() const {
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], &before_[i], nullptr);
  }
}

}  // namespace tools
