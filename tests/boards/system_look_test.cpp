// The system's look: every name leads to a colour, and what is written can be read.

#include "host/keyboard/boards/system_look.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "host/keyboard/boards/key_state.h"

namespace host::boards {
namespace {

using drawing::Rgba;

constexpr Role kRoles[] = {Role::letter, Role::function, Role::space, Role::return_key};
constexpr Look kLooks[] = {Look::standard, Look::alert};
constexpr KeyState kStates[] = {KeyState::disabled, KeyState::normal, KeyState::pressed};
constexpr KeyState kShiftStates[] = {KeyState::shift_on, KeyState::shift_locked};

KeyLook lookOf(Role role, Look look, int state) {
  return systemKeyLook({role, Lettering::character}, look, Family::phone, state);
}

/// Every look of a name of its own.
template <typename Check>
void forEveryLook(Check check) {
  const auto visit = [&](Look look, Role role, KeyState state) {
    const KeyLook found = lookOf(role, look, static_cast<int>(state));
    SCOPED_TRACE(std::string(found.gradient));
    check(found, look, state);
  };
  for (const Look look : kLooks) {
    for (const Role role : kRoles) {
      for (const KeyState state : kStates) visit(look, role, state);
    }
    for (const KeyState state : kShiftStates) visit(look, Role::function, state);
  }
}

Rgba over(const Rgba& above, const Rgba& below) {
  const auto mix = [&](double a, double b) { return std::lerp(b, a, above.alpha); };
  return {mix(above.red, below.red), mix(above.green, below.green), mix(above.blue, below.blue), 1};
}

Rgba colorOf(std::string_view gradient) {
  return *systemColor(systemGradient(gradient)->start);
}

double luminance(const Rgba& color) {
  const auto linear = [](double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

double contrast(const Rgba& one, const Rgba& other) {
  const auto [low, high] = std::minmax({luminance(one), luminance(other)});
  return (high + 0.05) / (low + 0.05);
}

TEST(SystemLook, EveryNameIsKnown) {
  forEveryLook([](const KeyLook& look, Look, KeyState) {
    ASSERT_TRUE(systemGradient(look.gradient));
    for (const std::string_view name :
         {look.text_color, look.secondary_text_color, look.etch_color, look.edge_color}) {
      EXPECT_TRUE(systemColor(name)) << name;
    }
  });
  for (const Look look : kLooks) {
    EXPECT_TRUE(systemGradient(systemBackgroundGradient(look)));
  }
}

TEST(SystemLook, EveryStateOfEveryRoleCanBeRecoloredByItself) {
  std::set<std::string_view> gradients;
  std::set<std::string_view> texts;
  forEveryLook([&](const KeyLook& look, Look, KeyState) {
    EXPECT_TRUE(gradients.insert(look.gradient).second);
    EXPECT_TRUE(texts.insert(look.text_color).second);
  });
}

TEST(SystemLook, TextCanBeReadOnItsFace) {
  forEveryLook([](const KeyLook& look, Look whole, KeyState state) {
    const Rgba behind = over(colorOf(systemBackgroundGradient(whole)), {0.5, 0.5, 0.5, 1});
    const Rgba face = over(colorOf(look.gradient), behind);
    const double least = state == KeyState::disabled ? 1.4 : 4.5;
    EXPECT_GE(contrast(over(*systemColor(look.text_color), face), face), least);
  });
}

TEST(SystemLook, StatesCanBeToldApart) {
  for (const Look look : kLooks) {
    for (const Role role : kRoles) {
      const auto face = [&](KeyState state) {
        return colorOf(lookOf(role, look, static_cast<int>(state)).gradient);
      };
      EXPECT_NE(face(KeyState::normal), face(KeyState::pressed));
      EXPECT_NE(face(KeyState::normal), face(KeyState::disabled));
    }
  }
}

TEST(SystemLook, ShiftThatIsOnStandsOutFromAllFunctionKeys) {
  for (const Look look : kLooks) {
    const auto on = lookOf(Role::function, look, 8);
    const auto locked = lookOf(Role::function, look, 32);
    EXPECT_NE(colorOf(on.gradient), colorOf(lookOf(Role::function, look, 2).gradient));
    EXPECT_NE(colorOf(on.gradient), colorOf(lookOf(Role::function, look, 1).gradient));
    EXPECT_NE(on.gradient, locked.gradient);
    for (const int pressed : {12, 36}) {
      EXPECT_EQ(lookOf(Role::function, look, pressed).gradient,
                lookOf(Role::function, look, 4).gradient);
    }
  }
  // A shift that is on is as light as a letter.
  EXPECT_EQ(colorOf(lookOf(Role::function, Look::standard, 8).gradient),
            colorOf(lookOf(Role::letter, Look::standard, 2).gradient));
}

TEST(SystemLook, OtherStatesLookNormal) {
  for (const int state : {0, 3, 5, 9, 16, 40, -1}) {
    EXPECT_EQ(lookOf(Role::space, Look::alert, state).gradient,
              lookOf(Role::space, Look::alert, 2).gradient);
  }
}

TEST(SystemLook, TextIsLargerOnATablet) {
  for (const Lettering lettering :
       {Lettering::character, Lettering::pair, Lettering::word, Lettering::symbol}) {
    const auto look = [&](Family family) {
      return systemKeyLook({Role::letter, lettering}, Look::standard, family, 2);
    };
    const KeyLook phone = look(Family::phone);
    const KeyLook tablet = look(Family::tablet);
    EXPECT_EQ(tablet.font_name, phone.font_name);
    EXPECT_GT(tablet.font_size_pt, phone.font_size_pt);
    EXPECT_GE(tablet.font_size_pt, tablet.secondary_font_size_pt);
  }
}

TEST(SystemLook, BothTextsOfAPairAreAlikeInEveryState) {
  for (const Look look : kLooks) {
    for (const KeyState state : kStates) {
      const KeyLook pair = systemKeyLook({Role::letter, Lettering::pair}, look, Family::tablet,
                                         static_cast<int>(state));
      EXPECT_EQ(pair.secondary_font_size_pt, pair.font_size_pt);
      EXPECT_NE(pair.secondary_text_color, pair.text_color);
      EXPECT_EQ(systemColor(pair.secondary_text_color), systemColor(pair.text_color));
    }
  }
}

TEST(SystemLook, PaletteHasThePairsThatAThemeMayDefineAnew) {
  for (const std::string look : {"Standard", "Alert"}) {
    const auto start = systemColor("UIKBColorBackground" + look + "GradientStart");
    const auto end = systemColor("UIKBColorBackground" + look + "GradientEnd");
    const auto own = systemColor("UIKBColorBackground" + look);
    ASSERT_TRUE(start && end && own);
    EXPECT_EQ(start, own);
    EXPECT_EQ(end, own);
  }
}

TEST(SystemLook, HalfAPairChangesNothingThatTheSystemDraws) {
  for (const NamedGradient& gradient : systemGradients()) {
    EXPECT_FALSE(gradient.start.ends_with("GradientStart")) << gradient.name;
    EXPECT_FALSE(gradient.end.ends_with("GradientEnd")) << gradient.name;
  }
}

TEST(SystemLook, UnknownNamesAreNone) {
  for (const char* name : {"", "uikbcolorkeyletter", "UIKBColorKeyLette", "UIKBColorKeyLetter "}) {
    EXPECT_FALSE(systemColor(name)) << name;
  }
  EXPECT_TRUE(systemColor("UIKBColorKeyLetter"));
  EXPECT_FALSE(systemGradient("UIKBColorKeyLetter"));
  EXPECT_FALSE(systemGradient(""));
}

TEST(SystemLook, EveryColorCanBeFoundByName) {
  for (const NamedColor& each : systemColors()) EXPECT_EQ(systemColor(each.name), each.color);
  for (const NamedGradient& each : systemGradients()) EXPECT_EQ(systemGradient(each.name), &each);
}

}  // namespace
}  // namespace host::boards
