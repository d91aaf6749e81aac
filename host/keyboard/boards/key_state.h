#pragma once

// States of a key, and the symbol that a key shows in them. Any thread may ask.

#include "host/keyboard/boards/board.h"

namespace host::boards {

/// What a key answers when it is asked for its state. A pressed shift key that is on or locked
/// answers the sum of both.
enum class KeyState : int {
  disabled = 1,
  normal = 2,
  pressed = 4,
  shift_on = 8,
  shift_on_pressed = shift_on + pressed,
  shift_locked = 32,
  shift_locked_pressed = shift_locked + pressed,
};

/// What a shift key does to the letters: nothing, the next one large, all of them.
enum class Shift { none, on, locked };

/// The shift of a keyplane on which nobody has said otherwise: capital letters have it on.
constexpr Shift defaultShift(Plane plane) {
  return plane == Plane::capital_letters ? Shift::on : Shift::none;
}

/// The state of a key of `type` on `plane` before anybody touches it. Shift keys follow `shift`
/// where there are letters to shift; in their place elsewhere are keys that switch keyplanes.
constexpr KeyState restingState(DisplayType type, const Keyplane& plane, Shift shift) {
  if (type != DisplayType::shift || !plane.is_letters || shift == Shift::none) {
    return KeyState::normal;
  }
  return shift == Shift::on ? KeyState::shift_on : KeyState::shift_locked;
}

/// The state of a key in `state` once it is pressed. A disabled key can't be.
constexpr KeyState pressedState(KeyState state) {
  switch (state) {
    case KeyState::disabled:
      return KeyState::disabled;
    case KeyState::shift_on:
    case KeyState::shift_on_pressed:
      return KeyState::shift_on_pressed;
    case KeyState::shift_locked:
    case KeyState::shift_locked_pressed:
      return KeyState::shift_locked_pressed;
    case KeyState::normal:
    case KeyState::pressed:
      break;
  }
  return KeyState::pressed;
}

/// What a key that a board lists with `shape` shows in `state`, a number that need be no KeyState:
/// the arrow of a shift key is filled while it is on, and has a bar while it is locked.
constexpr Shape shapeInState(Shape shape, int state) {
  if (shape != Shape::shift) return shape;
  switch (static_cast<KeyState>(state)) {
    case KeyState::shift_on:
    case KeyState::shift_on_pressed:
      return Shape::shift_on;
    case KeyState::shift_locked:
    case KeyState::shift_locked_pressed:
      return Shape::shift_locked;
    case KeyState::disabled:
    case KeyState::normal:
    case KeyState::pressed:
      break;
  }
  return Shape::shift;
}

}  // namespace host::boards
