// Which font a name stands for.

#include <gtest/gtest.h>

#include "drawing/pictures.h"
#include "host/drawing/face.h"
#include "host/drawing/font_traits.h"

namespace host {
namespace {

TEST(Font, UnknownNameIsTheSystemFontInTheLookItHintsAt) {
  struct Case {
    const char* name;
    const char* system;
  };
  constexpr Case kCases[] = {
      {"", "Inter-Regular"},
      {"No Such Font", "Inter-Regular"},
      {"Helvetica-Bold", "Inter-Bold"},
      {"HelveticaNeue-Light", "Inter-Light"},
      {"HelveticaNeue-UltraLight", "Inter-ExtraLight"},
      {"Arial-BoldItalicMT", "Inter-BoldItalic"},
      {"Avenir-HeavyOblique", "Inter-BlackItalic"},
      {"Optima-Italic", "Inter-Italic"},
      {"Futura-SEMIBOLD", "Inter-SemiBold"},
      // Names that only try to be a path.
      {"Inter-../Inter-Bold", "Inter-Bold"},
      {"Inter-/etc/passwd", "Inter-Regular"},
      {"../../Inter-Regular", "Inter-Regular"},
  };
  for (const Case& each : kCases) {
    EXPECT_EQ(drawnText("Rag", each.name), drawnText("Rag", each.system)) << each.name;
  }
}

TEST(Font, TraitsMakeTheNameOfTheSystemFont) {
  struct Case {
    const char* name;
    const char* system;
  };
  constexpr Case kCases[] = {{"", "Inter-Regular"},
                             {"x-demibold", "Inter-SemiBold"},
                             {"Extra Boldness", "Inter-Bold"},
                             {"THIN Oblique", "Inter-ThinItalic"},
                             {"Bol", "Inter-Regular"},
                             {"boldly", "Inter-Bold"}};
  for (const Case& each : kCases) {
    EXPECT_EQ(drawing::systemFontName(drawing::traitsOf(each.name)), each.system) << each.name;
  }
}

TEST(Font, IsFoundByPostScriptNameFullNameFamilyAndStyle) {
  // Each line names one font in several ways.
  const std::vector<std::vector<const char*>> kNames = {
      {"DejaVuSans-Bold", "DejaVu Sans Bold", "DejaVu Sans-Bold", "dejavu sans bold"},
      {"DejaVuSans", "DejaVu Sans", "DejaVu Sans-Book"},
      {"DejaVuSerif", "DejaVu Serif"},
      {"DejaVuSansMono-Bold", "DejaVu Sans Mono-Bold"},
      {"Inter-Light", "Inter Light", "Inter-light"},
      {"InterDisplay-Light", "Inter Display Light", "Inter Display-Light"},
      {"Inter-Regular", "Inter"},
  };
  std::vector<images::Bitmap> first;
  for (const auto& names : kNames) {
    first.push_back(drawnText("Rag", names[0]));
    for (const char* name : names) EXPECT_EQ(drawnText("Rag", name), first.back()) << name;
  }
  for (std::size_t i = 0; i < first.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) EXPECT_NE(first[i], first[j]) << i << " and " << j;
  }
}

TEST(Font, CharacterThatAFontLacksComesFromOneThatHasIt) {
  drawing::Fonts fonts;
  for (const char* name : {"Inter-Regular", "InterDisplay-Light", "DejaVuSansMono-Bold"}) {
    const drawing::Face* face = fonts.named(name);
    ASSERT_TRUE(face);
    for (const char32_t character : {U'a', U'ж', U'א', U'♞', U'€', U'Ω'}) {
      const drawing::Face* covering = fonts.covering(character, face);
      EXPECT_TRUE(covering->has(character)) << name << " " << static_cast<int>(character);
      EXPECT_EQ(covering == face, face->has(character));
    }
  }
}

TEST(Font, CharacterThatNoFontHasStaysWithThePreferredOne) {
  drawing::Fonts fonts;
  const drawing::Face* face = fonts.named("Inter-Regular");
  EXPECT_EQ(fonts.covering(U'\U0010fffd', face), face);
  EXPECT_FALSE(inked(drawnText("\U0010fffd", "Inter-Regular")).empty());
}

TEST(Font, MarkStaysWithItsLetter) {
  const auto composed = drawnText("é", "Inter-Regular", 2);
  EXPECT_EQ(drawnText("e\u0301", "Inter-Regular", 2), composed);
  EXPECT_NE(drawnText("e", "Inter-Regular", 2), composed);
}

TEST(Font, IsOpenedOnce) {
  drawing::Fonts fonts;
  EXPECT_EQ(fonts.named("Inter-Bold"), fonts.named("Helvetica-Bold"));
  EXPECT_EQ(fonts.named("DejaVu Sans"), fonts.named("DejaVuSans"));
}

TEST(Font, CollectionsComeAndGo) {
  const auto picture = pictureOf(keyWith(blackText("aж♞", "DejaVuSerif")));
  std::optional<images::Bitmap> before;
  for (int round = 0; round < 4; ++round) {
    drawing::Fonts fonts;
    const auto bitmap = drawing::draw(picture, fonts);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap, before.value_or(*bitmap));
    before = bitmap;
  }
}

}  // namespace
}  // namespace host
