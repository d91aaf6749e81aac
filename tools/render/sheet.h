#pragma once

#include <span>
#include <vector>

#include "host/drawing/plain.h"
#include "keyboard/view.h"
#include "render/canvas.h"

namespace tools::render {

struct SheetPlan {
  host::drawing::Size size;  ///< points
  std::vector<Cell> cells;   ///< one a view, in the same order
};

/// Where the views of a contact sheet lie. The views of one board, held one way, make a block with
/// a row for each style; blocks lie beside each other while they fit. Views of a block follow each
/// other in `views`.
SheetPlan planSheet(std::span<const keyboard::View> views);

}  // namespace tools::render
