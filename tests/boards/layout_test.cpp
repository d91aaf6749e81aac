// Where keys lie, for every board, keyplane, orientation and device.

#include "host/keyboard/boards/layout.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace host::boards {
namespace {

constexpr Plane kPlanes[] = {Plane::small_letters, Plane::capital_letters, Plane::numbers,
                             Plane::numbers_alternate};
constexpr Orientation kOrientations[] = {Orientation::portrait, Orientation::landscape};
constexpr Variant kVariants[] = {{false, false}, {false, true}, {true, false}, {true, true}};

template <typename Check>
void forEveryKeyplane(Check check) {
  for (const Board& board : allBoards()) {
    for (const Plane plane : kPlanes) {
      for (const Orientation orientation : kOrientations) {
        for (const Variant variant : kVariants) {
          const PlacedKeyplane placed = place(board, plane, orientation, variant);
          SCOPED_TRACE(std::string(board.name) + " " + placed.name + " " +
                       std::to_string(variant.international_key) +
                       std::to_string(variant.dictation_key));
          check(placed, board.metrics(orientation));
        }
      }
    }
  }
}

std::map<int, std::vector<PlacedKey>> rowsOf(const PlacedKeyplane& placed) {
  std::map<int, std::vector<PlacedKey>> rows;
  for (const PlacedKey& key : placed.keys) rows[key.row_hint].push_back(key);
  return rows;
}

bool isWhole(const drawing::Rect& rect) {
  return std::floor(rect.x) == rect.x && std::floor(rect.y) == rect.y &&
         std::floor(rect.width) == rect.width && std::floor(rect.height) == rect.height;
}

bool contains(const drawing::Rect& outer, const drawing::Rect& inner) {
  return outer.x <= inner.x && outer.y <= inner.y && outer.right() >= inner.right() &&
         outer.bottom() >= inner.bottom();
}

const PlacedKey* find(const PlacedKeyplane& placed, std::string_view name) {
  for (const PlacedKey& key : placed.keys) {
    if (key.key->name == name) return &key;
  }
  return nullptr;
}

TEST(Layout, FramesTileTheBoardWithoutOverlap) {
  forEveryKeyplane([](const PlacedKeyplane& placed, const Metrics&) {
    double top = 0;
    for (const auto& [hint, row] : rowsOf(placed)) {
      double left = 0;
      for (const PlacedKey& key : row) {
        EXPECT_EQ(key.frame.x, left) << key.key->name;
        EXPECT_EQ(key.frame.y, top) << key.key->name;
        EXPECT_EQ(key.frame.bottom(), row.front().frame.bottom()) << key.key->name;
        left = key.frame.right();
      }
      EXPECT_EQ(left, placed.size.width);
      top = row.front().frame.bottom();
    }
    EXPECT_EQ(top, placed.size.height);
  });
}

TEST(Layout, FacesAreWholeAndLieInTheirFramesInStraightRows) {
  forEveryKeyplane([](const PlacedKeyplane& placed, const Metrics& metrics) {
    for (const auto& [hint, row] : rowsOf(placed)) {
      for (const PlacedKey& key : row) {
        EXPECT_TRUE(isWhole(key.frame) && isWhole(key.face)) << key.key->name;
        EXPECT_TRUE(contains(key.frame, key.face)) << key.key->name;
        EXPECT_EQ(key.face.y, metrics.top + (hint - 1) * metrics.row_pitch);
        EXPECT_EQ(key.face.height, metrics.face_height);
        EXPECT_GE(key.face.width, 2 * metrics.unit / 3) << key.key->name;
      }
    }
  });
}

TEST(Layout, FacesKeepTheirGapAndLettersAreAlike) {
  forEveryKeyplane([](const PlacedKeyplane& placed, const Metrics& metrics) {
    for (const auto& [hint, row] : rowsOf(placed)) {
      for (std::size_t i = 1; i < row.size(); ++i) {
        EXPECT_GE(row[i].face.x - row[i - 1].face.right(), metrics.face_gap) << row[i].key->name;
      }
    }
    for (const PlacedKey& key : placed.keys) {
      if (key.key->role != Role::letter || key.key->width != 1) continue;
      EXPECT_EQ(key.face.width, metrics.unit - metrics.face_gap) << key.key->name;
    }
  });
}

TEST(Layout, KeysStandOnABackgroundAndTheOpeningIsEmpty) {
  forEveryKeyplane([](const PlacedKeyplane& placed, const Metrics& metrics) {
    EXPECT_EQ(placed.backgrounds.size(), metrics.opening ? 2u : 1u);
    for (const PlacedKey& key : placed.keys) {
      const bool stands = std::ranges::any_of(
          placed.backgrounds, [&](const drawing::Rect& each) { return contains(each, key.face); });
      EXPECT_TRUE(stands) << key.key->name;
    }
    for (const drawing::Rect& each : placed.backgrounds) EXPECT_TRUE(isWhole(each));
    EXPECT_EQ(placed.backgrounds.front().x, 0);
    EXPECT_EQ(placed.backgrounds.back().right(), placed.size.width);
    EXPECT_EQ(placed.backgrounds.front().height, placed.size.height);
  });
}

TEST(Layout, TheOpeningIsHalvedBetweenItsTwoSides) {
  const Board& split = *findBoard("Tablet-Split");
  struct Case {
    Orientation orientation;
    drawing::Rect left, right;
    double middle;
  };
  constexpr Case kCases[] = {
      {Orientation::portrait, {0, 0, 282, 264}, {432, 0, 336, 264}, 357},
      {Orientation::landscape, {0, 0, 376, 352}, {576, 0, 448, 352}, 476},
  };
  for (const Case& each : kCases) {
    for (const Plane plane : kPlanes) {
      const auto placed = place(split, plane, each.orientation, {});
      EXPECT_EQ(placed.backgrounds, (std::vector{each.left, each.right}));
      for (const auto& [hint, row] : rowsOf(placed)) {
        const auto right = std::ranges::find_if(
            row, [&](const PlacedKey& key) { return key.face.x > each.right.x; });
        ASSERT_NE(right, row.end());
        EXPECT_EQ(right->frame.x, each.middle) << right->key->name;
      }
    }
  }
}

TEST(Layout, RowsAreAsFarFromTheRightEndAsFromTheLeft) {
  forEveryKeyplane([](const PlacedKeyplane& placed, const Metrics&) {
    const bool is_tablet = placed.size.height > 216;
    for (const auto& [hint, row] : rowsOf(placed)) {
      const double left = row.front().face.x;
      const double right = placed.size.width - row.back().face.right();
      // A tablet's second row is indented on the left alone: its return key reaches the end.
      if (is_tablet && row.front().key->lead > 0) {
        EXPECT_EQ(right, placed.keys.front().face.x) << "row " << hint;
        EXPECT_GT(left, right) << "row " << hint;
      } else {
        EXPECT_EQ(left, right) << "row " << hint;
      }
    }
  });
}

TEST(Layout, BottomRowHasTheKeysOfTheDeviceAndTheSpaceTakesTheRest) {
  struct Case {
    Variant variant;
    std::vector<std::string_view> names;
    double space_width;
  };
  const Case kCases[] = {
      {{false, false}, {"More-Key", "Space-Key", "Return-Key"}, 192},
      {{true, false}, {"More-Key", "International-Key", "Space-Key", "Return-Key"}, 152},
      {{false, true}, {"More-Key", "Dictation-Key", "Space-Key", "Return-Key"}, 152},
      {{true, true},
       {"More-Key", "International-Key", "Dictation-Key", "Space-Key", "Return-Key"},
       112},
  };
  for (const Plane plane : kPlanes) {
    for (const Case& each : kCases) {
      const auto placed =
          place(*findBoard("Phone-4-Inch"), plane, Orientation::portrait, each.variant);
      std::vector<std::string_view> names;
      const auto rows = rowsOf(placed);
      for (const PlacedKey& key : rows.at(4)) names.push_back(key.key->name);
      EXPECT_EQ(names, each.names);
      EXPECT_EQ(find(placed, "Space-Key")->face.width, each.space_width);
      EXPECT_EQ(find(placed, "Return-Key")->face, (drawing::Rect{243, 170, 74, 42}));
    }
  }
}

TEST(Layout, TabletsBottomRowShiftsWithTheKeysOfTheDevice) {
  struct Case {
    const char* board;
    Variant variant;
    drawing::Rect space;
  };
  constexpr Case kCases[] = {
      {"Tablet", {false, false}, {79, 200, 541, 55}},
      {"Tablet", {true, false}, {148, 200, 472, 55}},
      {"Tablet", {false, true}, {148, 200, 472, 55}},
      {"Tablet", {true, true}, {217, 200, 403, 55}},
      {"Tablet-Split", {false, false}, {63, 200, 210, 55}},
      {"Tablet-Split", {true, true}, {171, 200, 102, 55}},
  };
  for (const Case& each : kCases) {
    for (const Plane plane : kPlanes) {
      const auto placed = place(*findBoard(each.board), plane, Orientation::portrait, each.variant);
      EXPECT_EQ(find(placed, "Space-Key")->face, each.space) << each.board;
      EXPECT_EQ(find(placed, "International-Key") != nullptr, each.variant.international_key);
      EXPECT_EQ(find(placed, "Dictation-Key") != nullptr, each.variant.dictation_key);
    }
  }
}

TEST(Layout, KeysThatStayStayInPlaceFromKeyplaneToKeyplane) {
  for (const Board& board : allBoards()) {
    for (const Orientation orientation : kOrientations) {
      const auto first = place(board, Plane::small_letters, orientation, {});
      for (const Plane plane : kPlanes) {
        const auto other = place(board, plane, orientation, {});
        for (const char* name :
             {"Shift-Key", "Delete-Key", "More-Key", "International-Key", "Space-Key", "Return-Key",
              "Space-Key-Right", "More-Key-Right", "Dismiss-Key"}) {
          const PlacedKey* here = find(first, name);
          if (!here) continue;
          EXPECT_EQ(here->face, find(other, name)->face) << name;
        }
      }
    }
  }
}

TEST(Layout, BoardsHaveTheirSizes) {
  struct Case {
    const char* board;
    Orientation orientation;
    drawing::Size size;
  };
  constexpr Case kCases[] = {{"Phone-3.5-Inch", Orientation::portrait, {320, 216}},
                             {"Phone-3.5-Inch", Orientation::landscape, {480, 162}},
                             {"Phone-4-Inch", Orientation::portrait, {320, 216}},
                             {"Phone-4-Inch", Orientation::landscape, {568, 162}},
                             {"Tablet", Orientation::portrait, {768, 264}},
                             {"Tablet", Orientation::landscape, {1024, 352}},
                             {"Tablet-Split", Orientation::portrait, {768, 264}},
                             {"Tablet-Split", Orientation::landscape, {1024, 352}}};
  for (const Case& each : kCases) {
    const auto placed = place(*findBoard(each.board), Plane::numbers, each.orientation, {});
    EXPECT_EQ(placed.size, each.size) << each.board;
  }
}

TEST(Layout, KeyplaneNamesTellOrientationAndKind) {
  const Board& board = *findBoard("Phone-3.5-Inch");
  struct Case {
    Plane plane;
    const char* portrait;
    const char* landscape;
  };
  constexpr Case kCases[] = {
      {Plane::small_letters, "Portrait_Small-Letters", "Landscape_Small-Letters"},
      {Plane::capital_letters, "Portrait_Capital-Letters", "Landscape_Capital-Letters"},
      {Plane::numbers, "Portrait_Numbers-And-Punctuation", "Landscape_Numbers-And-Punctuation"},
      {Plane::numbers_alternate, "Portrait_Numbers-And-Punctuation-Alternate",
       "Landscape_Numbers-And-Punctuation-Alternate"}};
  for (const Case& each : kCases) {
    EXPECT_EQ(place(board, each.plane, Orientation::portrait, {}).name, each.portrait);
    EXPECT_EQ(place(board, each.plane, Orientation::landscape, {}).name, each.landscape);
  }
}

}  // namespace
}  // namespace host::boards
