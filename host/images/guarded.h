#pragma once

// The picture libraries leave through longjmp when they meet an error.

#include <csetjmp>

namespace host::images {

/// Runs `step`; false when it left through longjmp to `escape`. Whatever `step` calls between here
/// and the library may own nothing: a jump runs no destructors. So nothing here, and nothing in the
/// lambdas passed to it, may throw or have a destructor to run; what they work on is owned outside.
template <typename Step>
bool guarded(std::jmp_buf& escape, const Step& step) {
  if (setjmp(escape) != 0) return false;
  step();
  return true;
}

}  // namespace host::images
