// The boards' keys and how they are told apart.

#include "host/keyboard/boards/board.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

#include "host/keyboard/boards/board_rules.h"
#include "host/keyboard/boards/keys.h"

namespace host::boards {
namespace {

TEST(Board, IsFoundByItsWholeName) {
  ASSERT_TRUE(findBoard("Phone-4-Inch"));
  EXPECT_EQ(findBoard("Phone-4-Inch")->name, "Phone-4-Inch");
  for (const char* name : {"", "Phone-4", "phone-4-inch", "Phone-4-Inch "}) {
    EXPECT_FALSE(findBoard(name)) << name;
  }
}

TEST(Board, LettersReadAsTheyAreTyped) {
  struct Case {
    Plane plane;
    int row;
    const char* labels;
  };
  constexpr Case kCases[] = {
      {Plane::small_letters, 1, "q w e r t y u i o p "},
      {Plane::small_letters, 2, "a s d f g h j k l "},
      {Plane::small_letters, 3, " z x c v b n m  "},
      {Plane::small_letters, 4, "123   space return "},
      {Plane::capital_letters, 2, "A S D F G H J K L "},
      {Plane::numbers, 1, "1 2 3 4 5 6 7 8 9 0 "},
      {Plane::numbers, 2, "- / : ; ( ) $ & @ \" "},
      {Plane::numbers, 3, "#+= . , ? ! '  "},
      {Plane::numbers, 4, "ABC   space return "},
      {Plane::numbers_alternate, 1, "[ ] { } # % ^ * + = "},
      {Plane::numbers_alternate, 2, "_ \\ | ~ < > € £ ¥ • "},
      {Plane::numbers_alternate, 3, "123 . , ? ! '  "},
  };
  for (const Board& board : allBoards()) {
    for (const Case& each : kCases) {
      std::string labels;
      for (const Key& key :
           board.keyplane(each.plane).rows[static_cast<std::size_t>(each.row) - 1].keys) {
        labels.append(key.label).append(" ");
      }
      EXPECT_EQ(labels, each.labels) << board.name;
    }
  }
}

TEST(Board, LetterKeysAreNamedAfterTheirLetter) {
  for (const Board& board : allBoards()) {
    for (const Row& row : board.keyplane(Plane::small_letters).rows) {
      for (const Key& key : row.keys) {
        if (key.role != Role::letter) continue;
        const char capital = static_cast<char>(key.label[0] - 'a' + 'A');
        EXPECT_EQ(key.name, std::string("Latin-Small-Letter-") + capital);
      }
    }
    for (const Row& row : board.keyplane(Plane::capital_letters).rows) {
      for (const Key& key : row.keys) {
        if (key.role != Role::letter) continue;
        EXPECT_EQ(key.name, std::string("Latin-Capital-Letter-").append(key.label));
      }
    }
  }
}

TEST(Board, OneNameIsOneLabelOnAllKeyplanesButForKeysThatSwitch) {
  std::map<std::string_view, std::string_view> labels;
  for (const Keyplane& keyplane : findBoard("Phone-4-Inch")->keyplanes) {
    for (const Row& row : keyplane.rows) {
      for (const Key& key : row.keys) {
        if (key.display_type == DisplayType::shift || key.display_type == DisplayType::more) {
          continue;
        }
        const auto [known, is_new] = labels.emplace(key.name, key.label);
        EXPECT_EQ(known->second, key.label) << key.name;
      }
    }
  }
}

TEST(Board, ShiftLeadsThereAndBackAndMoreLeadsAcross) {
  for (const Board& board : allBoards()) {
    for (const Keyplane& keyplane : board.keyplanes) {
      EXPECT_EQ(board.keyplane(keyplane.on_shift).on_shift, keyplane.plane);
      EXPECT_NE(board.keyplane(keyplane.on_shift).is_shift_keyplane, keyplane.is_shift_keyplane);
      EXPECT_EQ(board.keyplane(keyplane.on_shift).is_letters, keyplane.is_letters);
      EXPECT_NE(board.keyplane(keyplane.on_more).is_letters, keyplane.is_letters);
      EXPECT_FALSE(board.keyplane(keyplane.on_more).is_shift_keyplane);
    }
  }
}

TEST(Board, RulesRefuseWhatIsWrong) {
  static constexpr Key kTwice[] = {letter("A", "a"), letter("A", "b")};
  static constexpr Key kNameless[] = {letter("", "a")};
  static constexpr Key kBlank[] = {letter("A", "")};
  static constexpr Key kWide[] = {returnKey("return", 8.5), space("space")};
  static constexpr Key kSound[] = {letter("A", "a"), letter("B", "b")};
  const auto keyplaneOf = [](std::span<const Row> rows) {
    Keyplane keyplane = allBoards()[0].keyplanes[0];
    keyplane.rows = rows;
    return keyplane;
  };
  static constexpr Row kRows[] = {{1, kTwice}, {1, kNameless}, {1, kBlank}, {1, kSound}};
  EXPECT_FALSE(namesAreUnique(keyplaneOf({&kRows[0], 1})));
  EXPECT_FALSE(namesAreUnique(keyplaneOf({&kRows[1], 1})));
  EXPECT_FALSE(everyKeyShowsSomething(keyplaneOf({&kRows[2], 1})));
  EXPECT_TRUE(namesAreUnique(keyplaneOf({&kRows[3], 1})));
  EXPECT_TRUE(everyKeyShowsSomething(keyplaneOf({&kRows[3], 1})));
  EXPECT_FALSE(rowsAreCounted(keyplaneOf({&kRows[2], 2})));
  EXPECT_TRUE(rowsAreCounted(keyplaneOf({&kRows[3], 1})));
  EXPECT_FALSE(fits({1, kWide}, 10));
  EXPECT_TRUE(fits({1, kWide}, 10.5));
}

TEST(DisplayType, HasANameForEveryNumber) {
  struct Case {
    int number;
    std::string_view name;
  };
  constexpr Case kCases[] = {
      {0, "UIKBKeyDisplayTypeLetter"},   {1, "UIKBKeyDisplayTypeShift"},
      {2, "UIKBKeyDisplayTypeDelete"},   {8, "UIKBKeyDisplayTypeDismiss"},
      {9, "UIKBKeyDisplayTypeTopRow"},   {10, "UIKBKeyDisplayTypeUnknown"},
      {-1, "UIKBKeyDisplayTypeUnknown"}, {1 << 30, "UIKBKeyDisplayTypeUnknown"}};
  for (const Case& each : kCases) EXPECT_EQ(displayTypeName(each.number), each.name);
}

}  // namespace
}  // namespace host::boards
