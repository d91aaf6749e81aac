#pragma once

#include <concepts>
#include <utility>

namespace prismal {

/// Does `work` and keeps to itself whatever it throws. The library is a guest in its process: when
/// memory runs out in the middle of a theme, the keyboard goes on without that piece of it.
template <std::invocable Work>
void withoutThrowing(Work&& work) noexcept {
  try {
    std::forward<Work>(work)();
  } catch (...) {  // NOLINT(bugprone-empty-catch): there is nobody to tell
  }
}

}  // namespace prismal
