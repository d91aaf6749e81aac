#pragma once

#include "platform/keyboard.h"

namespace prismal {

/// The small number by which conditions name the `state` of a key; 1, 2, 3, 6 and 7 occur.
constexpr int controlStateNumber(int state) {
  switch (state) {
    case 1:
      return 2;
    case 2:
      return 3;
    case 4:
      return 1;
    case 8:
    case 12:
      return 6;
    case 16:
      return 3;
    case 32:
    case 36:
      return 7;
    default:
      return (state & 3) == 0 ? 3 : 2;
  }
}

inline int PMGetControlState(platform::UIKBTree key) {
  return controlStateNumber(key.state());
}

}  // namespace prismal
