#include <algorithm>

#include "host/keyboard/boards/board.h"
#include "host/keyboard/boards/board_rules.h"
#include "host/keyboard/boards/phone_3_5_inch.h"
#include "host/keyboard/boards/phone_4_inch.h"
#include "host/keyboard/boards/tablet.h"
#include "host/keyboard/boards/tablet_split.h"
#include "host/keyboard/boards/visual_style.h"

namespace host::boards {
namespace {

constexpr Board kBoards[] = {kPhone3_5Inch, kPhone4Inch, kTablet, kTabletSplit};
static_assert(isSound(kPhone3_5Inch) && isSound(kPhone4Inch));
static_assert(isSound(kTablet));
static_assert(isSound(kTabletSplit));

constexpr bool everyVisualStyleIsShown() {
  for (int style = kFirstVisualStyle; style <= kLastVisualStyle; ++style) {
    if (!std::ranges::any_of(kBoards, [&](const Board& board) { return shows(board, style); })) {
      return false;
    }
  }
  return true;
}
static_assert(everyVisualStyleIsShown());

}  // namespace

std::span<const Board> allBoards() {
  return kBoards;
}

const Board* findBoard(std::string_view name) {
  const auto found = std::ranges::find(kBoards, name, &Board::name);
  return found == std::end(kBoards) ? nullptr : found;
}

}  // namespace host::boards
