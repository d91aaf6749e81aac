// Texts and drawn glyphs on keys.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <set>
#include <vector>

#include "drawing/board_picture.h"
#include "drawing/pictures.h"

namespace host {
namespace {

using drawing::Glyph;

constexpr Glyph kGlyphs[] = {Glyph::shift,  Glyph::shift_on,   Glyph::shift_locked,
                             Glyph::globe,  Glyph::microphone, Glyph::delete_left,
                             Glyph::dismiss};

std::string nameOf(const drawing::Symbol& symbol) {
  if (const auto* text = std::get_if<std::string>(&symbol.mark)) return *text;
  return "glyph " + std::to_string(static_cast<int>(std::get<Glyph>(symbol.mark)));
}

TEST(Symbol, EveryOneOfTheSystemLiesWithinItsKeyAndInItsMiddle) {
  for (const boards::Board& board : boards::allBoards()) {
    for (int plane = 0; plane < 4; ++plane) {
      for (const double scale : {1.0, 2.0}) {
        auto picture =
            systemPicture(board, static_cast<boards::Plane>(plane), boards::Orientation::portrait,
                          {true, true}, boards::Look::standard, scale);
        picture.background.reset();
        for (auto& key : picture.keys) {
          key.background.reset();
          key.edge.reset();
          key.symbol->style.color = kBlack;
          key.secondary_symbol.reset();
        }
        const auto bitmap = drawn(picture);
        for (const auto& key : picture.keys) {
          SCOPED_TRACE(nameOf(*key.symbol) + " @" + std::to_string(scale));
          const Box face = boxOf(key.frame, scale);
          const Box around{face.left - 2, face.top - 2, face.right + 2, face.bottom + 2};
          const Box ink = extent(bitmap, around, [](auto pixel) { return alphaOf(pixel) > 0x30; });
          EXPECT_FALSE(ink.empty());
          EXPECT_TRUE(face.contains(ink));
          EXPECT_NEAR(ink.middle(), face.middle(), 1);
        }
      }
    }
  }
}

TEST(Symbol, LettersStandOnOneLineWhateverTheirHeight) {
  for (const double scale : {1.0, 2.0}) {
    std::set<int> small;
    for (const char* letter : {"x", "z", "h", "k", "l", "i", "r", "m"}) {
      small.insert(inked(drawnText(letter, "Inter-Regular", scale)).bottom);
    }
    std::set<int> others;
    for (const char* text : {"E", "H", "X", "Z", "7", "Hx", "return", "#"}) {
      others.insert(inked(drawnText(text, "Inter-Regular", scale)).bottom);
    }
    EXPECT_EQ(small.size(), 1u);
    EXPECT_EQ(others.size(), 1u);
  }
}

TEST(Symbol, CapitalIsInTheMiddleOfTheHeight) {
  for (const double scale : {1.0, 2.0}) {
    const Box ink = inked(drawnText("H", "Inter-Regular", scale));
    EXPECT_NEAR((ink.top + ink.bottom) / 2.0, 30 * scale, 1);
  }
}

TEST(Symbol, FlatEndsAreSharp) {
  for (const double scale : {1.0, 2.0}) {
    const auto bitmap = drawnText("H", "Inter-Regular", scale);
    const Box ink = inked(bitmap);
    const Box touched = extent(bitmap, whole(bitmap), [](auto pixel) { return pixel != 0; });
    EXPECT_EQ(touched.top, ink.top);
    EXPECT_EQ(touched.bottom, ink.bottom);
  }
}

TEST(Symbol, EtchIsTheSameShapeDisplaced) {
  struct Case {
    drawing::Point offset;
    double scale;
    int x, y;
  };
  constexpr Case kCases[] = {{{0, 1}, 1, 0, 1},   {{0, 1}, 2, 0, 2},   {{0, -1}, 2, 0, -2},
                             {{3, -2}, 1, 3, -2}, {{0.5, 0}, 2, 1, 0}, {{0, 0}, 1, 0, 0}};
  for (const drawing::Symbol& plain :
       {blackText("k"), blackText("k", "DejaVuSerif-Bold"), drawing::Symbol{Glyph::globe, {}}}) {
    for (const Case& each : kCases) {
      drawing::Symbol etched = plain;
      etched.style.color = {0, 0, 0, 0};
      etched.style.etch_color = kRed;
      etched.style.etch_offset_pt = each.offset;
      const auto bitmap = drawn(pictureOf(keyWith(etched), each.scale));
      const Box expected = inked(drawn(pictureOf(keyWith(plain), each.scale)));
      EXPECT_EQ(inked(bitmap), expected.moved(each.x, each.y)) << nameOf(plain) << each.scale;
      const auto is_other = [](images::Pixel pixel) { return (pixel & 0xffff) != 0; };
      EXPECT_TRUE(extent(bitmap, whole(bitmap), is_other).empty());
    }
  }
}

TEST(Symbol, EtchLiesBeneathTheText) {
  drawing::Symbol symbol = blackText("H");
  symbol.style.etch_color = kRed;
  const auto etched = drawn(pictureOf(keyWith(symbol), 2));
  const auto is_red = [](images::Pixel pixel) { return pixel == kRedPixel; };
  EXPECT_TRUE(extent(etched, whole(etched), is_red).empty());
}

TEST(Symbol, EtchFarOutsideOrNowhereIsLeftOut) {
  const drawing::Symbol plain = blackText("k");
  const auto expected = drawn(pictureOf(keyWith(plain)));
  for (const double far : {1e4, -1e4, 1e300, HUGE_VAL, std::nan("")}) {
    drawing::Symbol etched = plain;
    etched.style.etch_color = kRed;
    etched.style.etch_offset_pt = {far, 1};
    EXPECT_EQ(drawn(pictureOf(keyWith(etched))), expected) << far;
    etched.style.etch_offset_pt = {1, far};
    EXPECT_EQ(drawn(pictureOf(keyWith(etched))), expected) << far;
  }
}

TEST(Symbol, WideTextIsSetSmallerToFit) {
  for (const char* text : {"Emergency Call", "WWWWWWWWWWWWWWWWWWWW", "return to sender"}) {
    const auto bitmap = drawnText(text, "Inter-Bold");
    const Box touched = extent(bitmap, whole(bitmap), [](auto pixel) { return pixel != 0; });
    EXPECT_FALSE(touched.empty());
    EXPECT_TRUE((Box{10, 10, 50, 50}).contains(touched)) << text;
  }
}

TEST(Symbol, TextThatIsNoneDrawsNothing) {
  for (const char* text : {"", " ", "\u200d"}) {
    EXPECT_TRUE(inked(drawnText(text, "Inter-Regular")).empty());
  }
}

TEST(Symbol, MalformedTextStillDraws) {
  for (const char* text : {"\xff", "a\xc3", "\xed\xa0\x80", "\xf8\x88\x80\x80\x80"}) {
    EXPECT_FALSE(inked(drawnText(text, "Inter-Regular")).empty());
  }
}

TEST(Symbol, GlyphsDifferAndLieInTheMiddle) {
  for (const double scale : {1.0, 2.0}) {
    std::set<std::vector<images::Pixel>> pictures;
    for (const Glyph glyph : kGlyphs) {
      const auto bitmap = drawn(pictureOf(keyWith({glyph, {"", 15, kBlack, {}, {}}}), scale));
      const Box ink = inked(bitmap);
      EXPECT_TRUE(boxOf({14, 14, 32, 32}, scale).contains(ink)) << static_cast<int>(glyph);
      EXPECT_NEAR(ink.middle(), 30 * scale, 1) << static_cast<int>(glyph);
      pictures.insert(bitmap.pixels);
    }
    EXPECT_EQ(pictures.size(), std::size(kGlyphs));
  }
}

TEST(Symbol, TranslucentGlyphIsNowhereDarkerThanItsColor) {
  for (const Glyph glyph : kGlyphs) {
    const auto bitmap = drawn(pictureOf(keyWith({glyph, {"", 15, {0, 0, 0, 0.5}, {}, {}}}), 2));
    const auto darker = [](images::Pixel pixel) { return alphaOf(pixel) > 129; };
    EXPECT_TRUE(extent(bitmap, whole(bitmap), darker).empty()) << static_cast<int>(glyph);
  }
}

TEST(Symbol, TranslucentOneIsTheOpaqueOneFaded) {
  std::vector<drawing::Symbol> symbols = {blackText("g"), blackText("Qj", "Inter-BlackItalic", 31),
                                          blackText("f\u0327", "DejaVuSerif-Italic"),
                                          blackText("\U0001f600")};
  for (const Glyph glyph : kGlyphs) symbols.push_back({glyph, {"", 15, kBlack, {}, {}}});
  for (drawing::Symbol symbol : symbols) {
    for (const double scale : {1.0, 2.0}) {
      symbol.style.color = {0, 0, 0, 0};
      symbol.style.etch_offset_pt = {7, -9};
      symbol.style.etch_color = kBlack;
      const auto opaque = drawn(pictureOf(keyWith(symbol), scale));
      symbol.style.etch_color = drawing::Rgba{0, 0, 0, 0.5};
      const auto faded = drawn(pictureOf(keyWith(symbol), scale));
      for (std::size_t i = 0; i < opaque.pixels.size(); ++i) {
        ASSERT_NEAR(2 * alphaOf(faded.pixels[i]), alphaOf(opaque.pixels[i]), 2) << nameOf(symbol);
      }
    }
  }
}

struct PairInk {
  Box upper, lower;
};

/// The ink of `upper` above `lower` on a face from 10 to 50 points, at 2 pixels a point.
PairInk inkOfPair(const char* upper, const char* lower, double upper_pt = 14) {
  auto key = keyWith(blackText(lower, "Inter-Regular", 14));
  key.secondary_symbol = blackText(upper, "Inter-Regular", upper_pt);
  key.secondary_symbol->style.color = kRed;
  const auto bitmap = drawn(pictureOf(key, 2));
  const auto is = [](images::Pixel color) {
    return
        [=](images::Pixel pixel) { return alphaOf(pixel) > 0x80 && (pixel & 0xff0000) == color; };
  };
  return {extent(bitmap, whole(bitmap), is(0xff0000)), extent(bitmap, whole(bitmap), is(0))};
}

TEST(Pair, StandsOneAboveTheOtherInTheMiddleOfTheFace) {
  for (const double upper_pt : {10.0, 14.0, 16.0}) {
    const auto [upper, lower] = inkOfPair("H", "X", upper_pt);
    EXPECT_FALSE(upper.empty());
    EXPECT_LT(upper.bottom, lower.top);
    EXPECT_NEAR(upper.top - 20, 100 - lower.bottom, 2) << upper_pt;
    EXPECT_NEAR(upper.middle(), 60, 1);
    EXPECT_NEAR(lower.middle(), 60, 1);
  }
}

TEST(Pair, StandsOnTheSameTwoLinesWhateverItsMarks) {
  const auto reference = inkOfPair("H", "X");
  for (const char* upper : {"!", "E", "7"}) {
    for (const char* lower : {".", "X", "1"}) {
      const auto ink = inkOfPair(upper, lower);
      // Round dots overshoot the line by less than a pixel.
      EXPECT_NEAR(ink.upper.bottom, reference.upper.bottom, 1) << upper;
      EXPECT_NEAR(ink.lower.bottom, reference.lower.bottom, 1) << lower;
    }
  }
}

TEST(Pair, OfTheTabletIsWithinItsFaceWithRoomOnBothSides) {
  for (const boards::Orientation orientation :
       {boards::Orientation::portrait, boards::Orientation::landscape}) {
    for (const char* name : {"Tablet", "Tablet-Split"}) {
      auto picture = systemPicture(*boards::findBoard(name), boards::Plane::small_letters,
                                   orientation, {}, boards::Look::standard, 2);
      picture.background.reset();
      std::erase_if(picture.keys, [](const auto& key) { return !key.secondary_symbol; });
      ASSERT_EQ(picture.keys.size(), 2u);
      for (auto& key : picture.keys) {
        key.background.reset();
        key.edge.reset();
      }
      const auto bitmap = drawn(picture);
      for (const auto& key : picture.keys) {
        const Box face = boxOf(key.frame, 2);
        const Box ink = extent(bitmap, face, [](auto pixel) { return alphaOf(pixel) >= 0x80; });
        const int above = ink.top - face.top;
        const int below = face.bottom - ink.bottom;
        EXPECT_GE(std::min(above, below), 10) << name;  // 5 points
        EXPECT_LE(std::abs(above - below), 10) << name;
      }
    }
  }
}

TEST(Pair, WithoutALowerOneIsASymbolAlone) {
  drawing::KeyPicture key;
  key.secondary_symbol = blackText("H");
  EXPECT_EQ(drawn(pictureOf(key, 2)), drawn(pictureOf(keyWith(blackText("H")), 2)));
}

}  // namespace
}  // namespace host
