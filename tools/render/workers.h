#pragma once

#include <cstddef>
#include <functional>

#include "host/drawing/fonts.h"

namespace tools::render {

/// Calls `work` for every number below `count`, each with the fonts of the thread that it runs on:
/// this one and as many others as there are processors left. Starts none for a single piece of
/// work. `finished` is called on this thread, now and then, with the number of pieces done. Returns
/// when all are done; `work` must not throw.
void inParallel(std::size_t count,
                const std::function<void(std::size_t, host::drawing::Fonts&)>& work,
                const std::function<void(std::size_t)>& finished);

}  // namespace tools::render
