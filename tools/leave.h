#pragma once

#include <cstdio>
#include <unistd.h>

#ifdef PRISMAL_COVERAGE
extern "C" void __gcov_dump();  // NOLINT(bugprone-reserved-identifier): the compiler's name
#endif

namespace tools {

/// Ends this process with what it has written, and without what else runs at exit: that is another
/// process's to do, or wants what a sandbox has taken away, as a leak checker does.
[[noreturn]] inline void leave(int status) {
  std::fflush(nullptr);
#ifdef PRISMAL_COVERAGE
  __gcov_dump();
#endif
  _exit(status);
}

}  // namespace tools
