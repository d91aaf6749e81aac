#include <algorithm>

#include "host/keyboard/boards/board.h"
#include "host/keyboard/boards/board_rules.h"
#include "host/keyboard/boards/phone_3_5_inch.h"
#include "host/keyboard/boards/phone_4_inch.h"

namespace host::boards {
namespace {

constexpr Board kBoards[] = {kPhone3_5Inch, kPhone4Inch};
static_assert(std::ranges::all_of(kBoards, isSound));

}  // namespace

std::span<const Board> allBoards() {
  return kBoards;
}

const Board* findBoard(std::string_view name) {
  const auto found = std::ranges::find(kBoards, name, &Board::name);
  return found == std::end(kBoards) ? nullptr : found;
}

}  // namespace host::boards
