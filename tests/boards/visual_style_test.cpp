// The numbers by which keyplanes tell how they want to look.

#include "host/keyboard/boards/visual_style.h"

#include <gtest/gtest.h>

namespace host::boards {
namespace {

TEST(VisualStyle, FollowsDeviceOrientationLookAndKeyplane) {
  struct Case {
    const char* board;
    Orientation orientation;
    int letters, numbers, alert;
  };
  constexpr Case kCases[] = {
      {"Phone-3.5-Inch", Orientation::portrait, 1, 1, 3},
      {"Phone-3.5-Inch", Orientation::landscape, 2, 2, 3},
      {"Phone-4-Inch", Orientation::portrait, 4, 4, 3},
      {"Phone-4-Inch", Orientation::landscape, 5, 5, 3},
      {"Tablet", Orientation::portrait, 6, 8, 9},
      {"Tablet", Orientation::landscape, 7, 10, 9},
      {"Tablet-Split", Orientation::portrait, 11, 11, 9},
      {"Tablet-Split", Orientation::landscape, 12, 12, 9},
  };
  for (const Case& each : kCases) {
    const VisualStyles& styles = findBoard(each.board)->visual_styles;
    for (const Keyplane& keyplane : findBoard(each.board)->keyplanes) {
      SCOPED_TRACE(std::string(each.board) + " " + std::string(keyplane.name));
      EXPECT_EQ(styles.of(Look::standard, each.orientation, keyplane.plane),
                keyplane.is_letters ? each.letters : each.numbers);
      EXPECT_EQ(styles.of(Look::alert, each.orientation, keyplane.plane), each.alert);
    }
  }
}

TEST(VisualStyle, TellsLookAndFamily) {
  for (int style = -1; style <= 14; ++style) {
    SCOPED_TRACE(style);
    EXPECT_EQ(lookOf(style), style == 3 || style == 9 ? Look::alert : Look::standard);
    for (const Family device : {Family::phone, Family::tablet}) {
      const bool is_style = style >= 1 && style <= 12;
      const Family expected = style < 6 ? Family::phone : Family::tablet;
      EXPECT_EQ(familyOf(style, device), is_style ? expected : device);
    }
  }
}

TEST(VisualStyle, OfABoardIsOfItsFamilyAndLook) {
  for (const Board& board : allBoards()) {
    const Family family = board.is_tablet ? Family::tablet : Family::phone;
    const Family other = board.is_tablet ? Family::phone : Family::tablet;
    for (const Look look : {Look::standard, Look::alert}) {
      for (const Orientation orientation : {Orientation::portrait, Orientation::landscape}) {
        for (const Keyplane& keyplane : board.keyplanes) {
          const int style = board.visual_styles.of(look, orientation, keyplane.plane);
          EXPECT_EQ(lookOf(style), look) << board.name << " " << style;
          EXPECT_EQ(familyOf(style, other), family) << board.name << " " << style;
        }
      }
    }
  }
}

}  // namespace
}  // namespace host::boards
