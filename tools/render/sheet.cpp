#include "render/sheet.h"

#include <algorithm>
#include <string>

namespace tools::render {

using keyboard::View;

namespace {

bool inOneBlock(const View& one, const View& other) {
  return one.keyplane.board == other.keyplane.board &&
         one.keyplane.orientation == other.keyplane.orientation;
}

std::string captionOf(const View& view) {
  std::string caption;
  for (const auto word : keyboard::wordsOf(view)) {
    if (!caption.empty()) caption += " · ";
    caption += word;
  }
  return caption;
}

/// The views of one board, held one way, with frames counted from the block's own corner.
struct Block {
  host::drawing::Size size;
  std::vector<Cell> cells;
};

Block blockOf(std::span<const View> views) {
  Block block;
  const auto& keyplane = views.front().keyplane;
  const auto picture = keyplane.board->metrics(keyplane.orientation).size;
  double x = 0;
  double y = 0;
  for (std::size_t i = 0; i < views.size(); ++i) {
    if (i > 0 && views[i].keyplane.look != views[i - 1].keyplane.look) {
      x = 0;
      y += picture.height + kCaptionHeight;
    }
    block.cells.push_back({{x, y, picture.width, picture.height}, captionOf(views[i])});
    block.size.width = std::max(block.size.width, x + picture.width);
    x += picture.width + kGap;
  }
  block.size.height = y + picture.height + kCaptionHeight;
  return block;
}

std::vector<Block> blocksOf(std::span<const View> views) {
  std::vector<Block> blocks;
  for (std::size_t first = 0; first < views.size();) {
    std::size_t end = first + 1;
    while (end < views.size() && inOneBlock(views[first], views[end])) ++end;
    blocks.push_back(blockOf(views.subspan(first, end - first)));
    first = end;
  }
  return blocks;
}

}  // namespace

SheetPlan planSheet(std::span<const View> views) {
  const std::vector<Block> blocks = blocksOf(views);
  double widest = 0;
  for (const Block& block : blocks) widest = std::max(widest, block.size.width);
  SheetPlan plan;
  double x = kGap;
  double y = kGap;
  double shelf = 0;
  for (const Block& block : blocks) {
    if (x > kGap && x + block.size.width > kGap + widest) {
      x = kGap;
      y += shelf + kGap;
      shelf = 0;
    }
    for (Cell cell : block.cells) {
      cell.frame.x += x;
      cell.frame.y += y;
      plan.cells.push_back(std::move(cell));
    }
    x += block.size.width + 2 * kGap;
    shelf = std::max(shelf, block.size.height);
  }
  plan.size = {widest + 2 * kGap, y + shelf};
  return plan;
}

}  // namespace tools::render
