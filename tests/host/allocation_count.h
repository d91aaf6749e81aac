#pragma once

#include <cstddef>

namespace tests {

/// How often this program has called operator new so far.
std::size_t allocationCount();

}  // namespace tests
