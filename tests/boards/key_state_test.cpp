// States of keys, and what keys show in them.

#include "host/keyboard/boards/key_state.h"

#include <gtest/gtest.h>

namespace host::boards {
namespace {

const Keyplane& keyplane(Plane plane) {
  return findBoard("Tablet")->keyplane(plane);
}

TEST(KeyState, OfShiftKeysFollowsTheShiftWhereThereAreLetters) {
  struct Case {
    DisplayType type;
    Plane plane;
    Shift shift;
    int state;
  };
  constexpr Case kCases[] = {
      {DisplayType::shift, Plane::small_letters, Shift::none, 2},
      {DisplayType::shift, Plane::small_letters, Shift::on, 8},
      {DisplayType::shift, Plane::capital_letters, Shift::on, 8},
      {DisplayType::shift, Plane::capital_letters, Shift::locked, 32},
      {DisplayType::shift, Plane::capital_letters, Shift::none, 2},
      {DisplayType::shift, Plane::numbers, Shift::on, 2},
      {DisplayType::shift, Plane::numbers_alternate, Shift::locked, 2},
      {DisplayType::letter, Plane::capital_letters, Shift::locked, 2},
      {DisplayType::delete_left, Plane::capital_letters, Shift::on, 2},
  };
  for (const Case& each : kCases) {
    const KeyState state = restingState(each.type, keyplane(each.plane), each.shift);
    EXPECT_EQ(static_cast<int>(state), each.state)
        << keyplane(each.plane).name << " type " << static_cast<int>(each.type);
  }
  EXPECT_EQ(defaultShift(Plane::capital_letters), Shift::on);
  for (const Plane plane : {Plane::small_letters, Plane::numbers, Plane::numbers_alternate}) {
    EXPECT_EQ(defaultShift(plane), Shift::none);
  }
}

TEST(KeyState, PressedIsTheSumWithAShiftAndNoneWhenDisabled) {
  struct Case {
    int state, pressed;
  };
  constexpr Case kCases[] = {{1, 1}, {2, 4}, {4, 4}, {8, 12}, {12, 12}, {32, 36}, {36, 36}};
  for (const Case& each : kCases) {
    EXPECT_EQ(static_cast<int>(pressedState(static_cast<KeyState>(each.state))), each.pressed);
  }
}

TEST(KeyState, TellsWhichArrowAShiftKeyShows) {
  struct Case {
    int state;
    Shape shape;
  };
  constexpr Case kCases[] = {
      {1, Shape::shift},         {2, Shape::shift},     {4, Shape::shift},
      {8, Shape::shift_on},      {12, Shape::shift_on}, {32, Shape::shift_locked},
      {36, Shape::shift_locked}, {0, Shape::shift},     {40, Shape::shift},
  };
  for (const Case& each : kCases) {
    EXPECT_EQ(shapeInState(Shape::shift, each.state), each.shape) << each.state;
    for (const Shape other : {Shape::text, Shape::globe, Shape::delete_left}) {
      EXPECT_EQ(shapeInState(other, each.state), other) << each.state;
    }
  }
}

}  // namespace
}  // namespace host::boards
