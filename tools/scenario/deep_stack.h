#pragma once

// Room for work whose recursion is as deep as its input is long.

#include <functional>

namespace tools::scenario {

/// Runs `work` on a thread of its own with a stack of 256 MiB, of which only what is used takes
/// memory, and waits for it. What `work` throws is thrown here; std::system_error when there is no
/// such thread to be had.
void onDeepStack(const std::function<void()>& work);

}  // namespace tools::scenario
