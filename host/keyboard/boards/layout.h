#pragma once

#include <string>
#include <vector>

#include "host/keyboard/boards/board.h"

namespace host::boards {

/// The keys that a device has or lacks.
struct Variant {
  bool international_key = true;
  bool dictation_key = false;
};

struct PlacedKey {
  const Key* key;
  int row_hint;
  drawing::Rect frame;  // where a touch is the key's; those of a row tile the board's width
  drawing::Rect face;   // what is drawn
};

struct PlacedKeyplane {
  std::string name;  // "Portrait_Small-Letters"
  drawing::Size size;
  // What the system's background lies behind: the whole board, or each half of one in two halves.
  std::vector<drawing::Rect> backgrounds;
  std::vector<PlacedKey> keys;  // row by row from the top, each from the left
};

/// Places the keys of one keyplane of `board`, which must outlive the answer. Points from the
/// board's top left corner, all whole. Any thread.
PlacedKeyplane place(const Board& board, Plane plane, Orientation orientation, Variant variant);

}  // namespace host::boards
