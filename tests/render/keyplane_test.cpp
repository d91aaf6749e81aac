// Keyplanes as the keyboard's objects, and the keys that are pressed and disabled on them.

#include "host/render/keyplane.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace host::render {
namespace {

using boards::Look;
using boards::Orientation;
using boards::Plane;
using boards::Shift;

LiveKeyplane keyplaneOf(const char* board, Plane plane, std::optional<Shift> shift = {}) {
  return makeKeyplane(
      {.board = boards::findBoard(board), .plane = plane, .variant = {}, .shift = shift});
}

/// The keys that are not simply at rest.
std::map<std::string, int> touchedIn(const LiveKeyplane& keyplane) {
  std::map<std::string, int> touched;
  for (const LiveKey& key : keyplane.keys) {
    if (key.tree->state() != 2) touched.emplace(key.placed.key->name, key.tree->state());
  }
  return touched;
}

using Touched = std::map<std::string, int>;

TEST(Keyplane, SaysWhatItsBoardSays) {
  const auto keyplane = makeKeyplane({.board = boards::findBoard("Tablet"),
                                      .plane = Plane::numbers_alternate,
                                      .orientation = Orientation::landscape,
                                      .look = Look::standard,
                                      .variant = {},
                                      .shift = {}});
  EXPECT_EQ(keyplane.tree->name(), "Landscape_Numbers-And-Punctuation-Alternate");
  EXPECT_EQ(keyplane.tree->visualStyle(), 10);
  EXPECT_EQ(keyplane.tree->type(), 2);
  EXPECT_FALSE(keyplane.tree->isLetters());
  EXPECT_TRUE(keyplane.tree->isShiftKeyplane());
}

TEST(Keyplane, ShiftKeysFollowTheShift) {
  EXPECT_EQ(touchedIn(keyplaneOf("Tablet", Plane::small_letters)), Touched{});
  EXPECT_EQ(touchedIn(keyplaneOf("Phone-4-Inch", Plane::capital_letters)),
            (Touched{{"Shift-Key", 8}}));
  EXPECT_EQ(touchedIn(keyplaneOf("Tablet", Plane::capital_letters)),
            (Touched{{"Shift-Key", 8}, {"Shift-Key-Right", 8}}));
  EXPECT_EQ(touchedIn(keyplaneOf("Tablet", Plane::capital_letters, Shift::locked)),
            (Touched{{"Shift-Key", 32}, {"Shift-Key-Right", 32}}));
  EXPECT_EQ(touchedIn(keyplaneOf("Tablet", Plane::capital_letters, Shift::none)), Touched{});
  EXPECT_EQ(touchedIn(keyplaneOf("Tablet", Plane::numbers, Shift::locked)), Touched{});
}

TEST(Keyplane, NameIsOneKeyAndLabelAllThatHaveIt) {
  auto numbers = keyplaneOf("Tablet", Plane::numbers);
  EXPECT_TRUE(press(numbers, "#+="));
  EXPECT_TRUE(press(numbers, "More-Key-Right"));
  EXPECT_TRUE(disable(numbers, "undo"));
  EXPECT_EQ(
      touchedIn(numbers),
      (Touched{{"Shift-Key", 4}, {"Shift-Key-Right", 4}, {"More-Key-Right", 4}, {"Undo-Key", 1}}));
}

TEST(Keyplane, EmptyLabelNamesNoKey) {
  auto letters = keyplaneOf("Tablet", Plane::small_letters);
  for (const char* unknown : {"", "QQ", "Shift-Key "}) {
    EXPECT_FALSE(press(letters, unknown)) << unknown;
    EXPECT_FALSE(disable(letters, unknown)) << unknown;
  }
  EXPECT_EQ(touchedIn(letters), Touched{});
}

TEST(Keyplane, OtherLetterCaseCountsWhereNothingFitsAsItStands) {
  auto letters = keyplaneOf("Tablet", Plane::small_letters);
  EXPECT_TRUE(press(letters, "Q"));
  EXPECT_FALSE(press(letters, "undo-KEY"));
  EXPECT_TRUE(press(letters, "dismiss-key"));
  EXPECT_EQ(touchedIn(letters), (Touched{{"Latin-Small-Letter-Q", 4}, {"Dismiss-Key", 4}}));
}

TEST(Keyplane, DisabledKeyStaysDisabledInEitherOrder) {
  auto letters = keyplaneOf("Phone-4-Inch", Plane::capital_letters);
  EXPECT_TRUE(press(letters, "A") && disable(letters, "A"));
  EXPECT_TRUE(disable(letters, "B") && press(letters, "B"));
  EXPECT_TRUE(disable(letters, "Delete-Key"));
  EXPECT_TRUE(press(letters, "Shift-Key"));
  EXPECT_EQ(touchedIn(letters), (Touched{{"Latin-Capital-Letter-A", 1},
                                         {"Latin-Capital-Letter-B", 1},
                                         {"Delete-Key", 1},
                                         {"Shift-Key", 12}}));
}

TEST(Keyplane, PressedLockedShiftIsTheSum) {
  auto letters = keyplaneOf("Tablet", Plane::capital_letters, Shift::locked);
  EXPECT_TRUE(press(letters, "Shift-Key-Right"));
  EXPECT_EQ(touchedIn(letters), (Touched{{"Shift-Key", 32}, {"Shift-Key-Right", 36}}));
}

}  // namespace
}  // namespace host::render
