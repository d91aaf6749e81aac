// Where keys lie, for every board, keyplane, orientation and device.

#include "host/keyboard/boards/layout.h"

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

TEST(Layout, RowsAreInTheMiddle) {
  forEveryKeyplane([](const PlacedKeyplane& placed, const Metrics&) {
    for (const auto& [hint, row] : rowsOf(placed)) {
      EXPECT_EQ(row.front().face.x, placed.size.width - row.back().face.right()) << "row " << hint;
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

TEST(Layout, KeysThatStayStayInPlaceFromKeyplaneToKeyplane) {
  for (const Board& board : allBoards()) {
    for (const Orientation orientation : kOrientations) {
      const auto first = place(board, Plane::small_letters, orientation, {});
      for (const Plane plane : kPlanes) {
        const auto other = place(board, plane, orientation, {});
        for (const char* name : {"Shift-Key", "Delete-Key", "More-Key", "International-Key",
                                 "Space-Key", "Return-Key"}) {
          EXPECT_EQ(find(first, name)->face, find(other, name)->face) << name;
        }
      }
    }
  }
}

TEST(Layout, PhonesHaveTheirSizes) {
  struct Case {
    const char* board;
    Orientation orientation;
    drawing::Size size;
  };
  constexpr Case kCases[] = {{"Phone-3.5-Inch", Orientation::portrait, {320, 216}},
                             {"Phone-3.5-Inch", Orientation::landscape, {480, 162}},
                             {"Phone-4-Inch", Orientation::portrait, {320, 216}},
                             {"Phone-4-Inch", Orientation::landscape, {568, 162}}};
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
