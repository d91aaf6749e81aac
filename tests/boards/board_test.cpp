// The boards' keys and how they are told apart.

#include "host/keyboard/boards/board.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#include "host/keyboard/boards/board_rules.h"
#include "host/keyboard/boards/keys.h"

namespace host::boards {
namespace {

std::vector<std::string_view> namesOf(const Keyplane& keyplane) {
  std::vector<std::string_view> names;
  for (const Row& row : keyplane.rows) {
    for (const Key& key : row.keys) names.push_back(key.name);
  }
  return names;
}

TEST(Board, IsFoundByItsWholeName) {
  ASSERT_TRUE(findBoard("Phone-4-Inch"));
  EXPECT_EQ(findBoard("Phone-4-Inch")->name, "Phone-4-Inch");
  for (const char* name : {"", "Phone-4", "phone-4-inch", "Phone-4-Inch ", "Tablet-"}) {
    EXPECT_FALSE(findBoard(name)) << name;
  }
}

struct RowCase {
  Plane plane;
  std::size_t row;
  const char* labels;
};

void expectLabels(std::string_view name, std::span<const RowCase> cases) {
  const Board* board = findBoard(name);
  ASSERT_TRUE(board) << name;
  for (const RowCase& each : cases) {
    std::string labels;
    for (const Key& key : board->keyplane(each.plane).rows[each.row - 1].keys) {
      labels.append(key.label).append(key.secondary_label).append(" ");
    }
    EXPECT_EQ(labels, each.labels) << name << " row " << each.row;
  }
}

TEST(Board, EveryOneIsSound) {
  for (const Board& board : allBoards()) EXPECT_TRUE(isSound(board)) << board.name;
}

TEST(Board, PhonesReadAsTheyAreTyped) {
  constexpr RowCase kCases[] = {
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
  expectLabels("Phone-3.5-Inch", kCases);
  expectLabels("Phone-4-Inch", kCases);
}

TEST(Board, TabletsReadAsTheyAreTyped) {
  constexpr RowCase kCases[] = {
      {Plane::small_letters, 1, "q w e r t y u i o p  "},
      {Plane::small_letters, 2, "a s d f g h j k l return "},
      {Plane::small_letters, 3, " z x c v b n m ,! .?  "},
      {Plane::small_letters, 4, ".?123   space .?123  "},
      {Plane::capital_letters, 1, "Q W E R T Y U I O P  "},
      {Plane::capital_letters, 2, "A S D F G H J K L return "},
      {Plane::capital_letters, 3, " Z X C V B N M ,! .?  "},
      {Plane::numbers, 1, "1 2 3 4 5 6 7 8 9 0  "},
      {Plane::numbers, 2, "- / : ; ( ) $ & @ return "},
      {Plane::numbers, 3, "#+= undo . , ? ! ' \" #+= "},
      {Plane::numbers, 4, "ABC   space ABC  "},
      {Plane::numbers_alternate, 1, "[ ] { } # % ^ * + =  "},
      {Plane::numbers_alternate, 2, "_ \\ | ~ < > € £ ¥ return "},
      {Plane::numbers_alternate, 3, "123 redo . , ? ! ' \" 123 "},
      {Plane::numbers_alternate, 4, "ABC   space ABC  "},
  };
  expectLabels("Tablet", kCases);
}

TEST(Board, SplitHasTheTabletsKeysAndASecondSpace) {
  const Board& whole = *findBoard("Tablet");
  const Board& split = *findBoard("Tablet-Split");
  for (const Keyplane& keyplane : whole.keyplanes) {
    std::vector<std::string_view> expected = namesOf(keyplane);
    const auto space = std::ranges::find(expected, "Space-Key");
    ASSERT_NE(space, expected.end());
    expected.insert(space + 1, "Space-Key-Right");
    EXPECT_EQ(namesOf(split.keyplane(keyplane.plane)), expected) << keyplane.name;
  }
}

bool isLetter(const Key& key) {
  return key.role == Role::letter && key.display_type_hint == DisplayTypeHint::none;
}

TEST(Board, LetterKeysAreNamedAfterTheirLetter) {
  for (const Board& board : allBoards()) {
    for (const Row& row : board.keyplane(Plane::small_letters).rows) {
      for (const Key& key : row.keys) {
        if (!isLetter(key)) continue;
        const char capital = static_cast<char>(key.label[0] - 'a' + 'A');
        EXPECT_EQ(key.name, std::string("Latin-Small-Letter-") + capital);
      }
    }
    for (const Row& row : board.keyplane(Plane::capital_letters).rows) {
      for (const Key& key : row.keys) {
        if (!isLetter(key)) continue;
        EXPECT_EQ(key.name, std::string("Latin-Capital-Letter-").append(key.label));
      }
    }
  }
}

TEST(Board, OneNameIsOneLabelOnAllKeyplanesButForKeysThatSwitch) {
  for (const Board& board : allBoards()) {
    std::map<std::string_view, std::string_view> labels;
    for (const Keyplane& keyplane : board.keyplanes) {
      for (const Row& row : keyplane.rows) {
        for (const Key& key : row.keys) {
          if (key.display_type == DisplayType::shift || key.display_type == DisplayType::more) {
            continue;
          }
          const auto [known, is_new] = labels.emplace(key.name, key.label);
          EXPECT_EQ(known->second, key.label) << board.name << " " << key.name;
        }
      }
    }
  }
}

TEST(Board, KeysOfAPairAreOfOneKind) {
  int pairs = 0;
  for (const Board& board : allBoards()) {
    for (const Keyplane& keyplane : board.keyplanes) {
      std::map<std::string, const Key*> keys;
      for (const Row& row : keyplane.rows) {
        for (const Key& key : row.keys) keys.emplace(key.name, &key);
      }
      for (const auto& [name, left] : keys) {
        const auto right = keys.find(name + "-Right");
        if (right == keys.end()) continue;
        ++pairs;
        EXPECT_EQ(right->second->display_type, left->display_type) << name;
        EXPECT_EQ(right->second->label, left->label) << name;
        EXPECT_EQ(right->second->shape, left->shape) << name;
      }
    }
  }
  // Shift and more on a tablet, and the space too on one in two halves.
  EXPECT_EQ(pairs, 4 * 2 + 4 * 3);
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
  static constexpr Key kWide[] = {returnKey(8.5), space("Space-Key")};
  static constexpr Key kLit[] = {drawn("A", Shape::shift_on, DisplayType::shift)};
  static constexpr Key kSound[] = {letter("A", "a"), letter("B", "b")};
  const auto keyplaneOf = [](std::span<const Row> rows) {
    Keyplane keyplane = allBoards()[0].keyplanes[0];
    keyplane.rows = rows;
    return keyplane;
  };
  static constexpr Row kRows[] = {{1, kTwice}, {1, kNameless}, {1, kBlank}, {1, kSound}, {1, kLit}};
  EXPECT_FALSE(namesAreUnique(keyplaneOf({&kRows[0], 1})));
  EXPECT_FALSE(namesAreUnique(keyplaneOf({&kRows[1], 1})));
  EXPECT_FALSE(everyKeyShowsSomething(keyplaneOf({&kRows[2], 1})));
  EXPECT_TRUE(namesAreUnique(keyplaneOf({&kRows[3], 1})));
  EXPECT_TRUE(everyKeyShowsSomething(keyplaneOf({&kRows[3], 1})));
  EXPECT_FALSE(rowsAreCounted(keyplaneOf({&kRows[2], 2})));
  EXPECT_TRUE(rowsAreCounted(keyplaneOf({&kRows[3], 1})));
  EXPECT_FALSE(everyKeyShowsSomething(keyplaneOf({&kRows[4], 1})));
  EXPECT_FALSE(fits({1, kWide}, 10));
  EXPECT_TRUE(fits({1, kWide}, 10.5));
  EXPECT_TRUE(liesWithin({}, 100));
  EXPECT_TRUE(liesWithin(Span{40, 60}, 100));
  for (const Span wrong : {Span{0, 60}, Span{60, 60}, Span{60, 40}, Span{40, 100}}) {
    EXPECT_FALSE(liesWithin(wrong, 100)) << wrong.from << " to " << wrong.to;
  }
}

TEST(DisplayType, HasANameForEveryNumber) {
  struct Case {
    int number;
    std::string_view name;
  };
  constexpr Case kCases[] = {
      {0, "UIKBKeyDisplayTypeLetter"},       {1, "UIKBKeyDisplayTypeShift"},
      {2, "UIKBKeyDisplayTypeDelete"},       {8, "UIKBKeyDisplayTypeDismiss"},
      {9, "UIKBKeyDisplayTypeUndo"},         {10, "UIKBKeyDisplayTypeRedo"},
      {11, "UIKBKeyDisplayTypeUnknown"},     {-1, "UIKBKeyDisplayTypeUnknown"},
      {1 << 30, "UIKBKeyDisplayTypeUnknown"}};
  for (const Case& each : kCases) EXPECT_EQ(displayTypeName(each.number), each.name);
}

}  // namespace
}  // namespace host::boards
