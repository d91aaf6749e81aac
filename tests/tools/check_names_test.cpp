// Names of colours and gradients, and what follows from faults: a fault is told once, where a
// person would mend it.

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "check_command.h"

namespace {

TEST_F(Check, NamesThatNothingAsksFor) {
  const std::string black = "#000000FF";
  const auto face = [](const std::string& name) {
    return gradients(pair(name, "UIKBColorKeyLetter"));
  };
  const Case cases[] = {
      {colors(pair("UIKBColorKeyLeter", "#FFFFFFFF")), "4:8 warning [unused-name]",
       colors(pair("UIKBColorKeyLetter", "#FFFFFFFF"))},
      {colors(pair("uikbColorTextLetter", black)), "4:8 warning [unused-name]",
       colors(pair("My TextLetter", black))},
      {colors(pair("UIKBMine", black)), "4:8 warning [unused-name]",
       colors(pair("UIKBMine", black)) + gradients(pair("G", "UIKBMine"))},
      {colors(pair("UIKBGradientKeyLetter", black)), "4:8 warning [unused-name]",
       face("UIKBGradientKeyLetter")},
      {face("UIKBColorKeySpace"), "4:8 warning [unused-name]", face("Mine")},
      {colors(pair("", black)), "4:8 warning [unused-name]", colors(pair("A", black))},
      // The one of a pair that is misspelt, not the other.
      {colors(pair("UIKBColorBackgroundStandardGradientStart", black) + "\n" +
              pair("UIKBColorBackgroundStandardGradientEnf", black)),
       "5:8 warning [unused-name]",
       colors(pair("UIKBColorBackgroundAlertGradientStart", black) + "\n" +
              pair("UIKBColorBackgroundAlertGradientEnd", black))},
      // Used twice, a name is right, and its definition wrong.
      {colors(pair("Acent", black)) + gradients("\n" + pair("A", "Accent") + pair("B", "Accent")),
       "4:8 warning [unused-name]",
       colors(pair("Accent", black)) + gradients(pair("A", "Accent") + pair("B", "Accent"))},
      {colors(pair("Accent", black)) + gradients(pair("A", "Acent")),
       "6:26 warning [unknown-color]",
       colors(pair("Accent", black)) + gradients(pair("A", "Accent"))},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(findingsOf(c.faulty, "--ignore low-contrast"), c.expected + "\n") << c.faulty;
    EXPECT_EQ(findingsOf(c.sound, "--ignore low-contrast"), "") << c.sound;
  }
}

TEST_F(Check, TellsNothingThatFollowsFromWhatItHasTold) {
  const std::string phone = "iPhone-Standard";
  const std::string white = pair("Light", "#FFFFFFFF");
  const auto text = [](const std::string& name) {
    return rule("DisplayType=Space;ControlState=3", "TextColor", "<string>" + name + "</string>");
  };
  const std::string dark = colors(pair("UIKBColorKeySpace", "#101010FF") + white);
  const std::string lit = rules(phone, text("Light"));
  const auto textLight = [&](const std::string& condition, const std::string& property) {
    return dark + rules(phone, rule(condition, property, "<string>Light</string>"));
  };
  // A dark space key, of which the rule that would light its text is broken; and names without
  // their definitions.
  const Case cases[] = {
      {textLight("DisplayType=Spacee;ControlState=3", "TextColor"), "6:8 warning [unknown-value]",
       dark + lit},
      {textLight("Displaytype=Space;ControlState=3", "TextColor"), "6:8 warning [unknown-term]",
       dark + lit},
      {textLight("DisplayType=Space;Row=Row1;ControlState=3", "TextColor"),
       "6:1 warning [rule-never-matches]", dark + lit},
      {textLight("DisplayType=Space;ControlState=3", "Textcolor"),
       "6:63 warning [unknown-property]", dark + lit},
      {dark + rules("iPhone-Standart", text("Light")), "5:7 warning [unknown-style]", dark + lit},
      {dark + "\n" +
           section("Style",
                   "<dict><key>iPhone-Standard</key><array>\n" + text("Light") + "</array></dict>"),
       "5:1 warning [unknown-section]", dark + lit},
      {colors(pair("UIKBColorKeySpace", "#101010FF") + pair("UIKBColorTextSpace", "#FFFFFF")),
       "4:118 error [color-string]",
       colors(pair("UIKBColorKeySpace", "#101010FF") + pair("UIKBColorTextSpace", "#FFFFFFFF"))},
      {colors(pair("UIKBColorKeySpace", "#101010FF") + pair("UIKBColorTexSpace", "#FFFFFFFF")),
       "4:83 warning [unused-name]",
       colors(pair("UIKBColorKeySpace", "#101010FF") + pair("UIKBColorTextSpace", "#FFFFFFFF"))},
      {section("CustomColor", "<dict><key>Light</key><string>#000000FF</string></dict>") + lit,
       "3:1 error [section-type]", colors(pair("Light", "#000000FF")) + lit},
      {section("CustomColors", "<array>" + pair("Light", "#000000FF") + "</array>") + lit,
       "2:1 warning [unknown-section]", colors(pair("Light", "#000000FF")) + lit},
      {colors("<array><integer>7</integer><string>#000000FF</string></array>") + lit,
       "4:8 error [color-name]", colors(pair("Light", "#000000FF")) + lit},
      {colors(pair("UIKBColorBackgroundStandardGradientStart", "#D0D0D0FF") + "\n" +
              pair("UIKBColorBackgroundStandardGradientEnd", "#D0D0D0")),
       "5:63 error [color-string]",
       colors(pair("UIKBColorBackgroundStandardGradientStart", "#D0D0D0FF") + "\n" +
              pair("UIKBColorBackgroundStandardGradientEnd", "#D0D0D0FF"))},
  };
  for (const Case& c : cases) {
    const std::string found = findingsOf(c.faulty);
    EXPECT_TRUE(found.ends_with(c.expected + "\n") && std::ranges::count(found, '\n') == 1)
        << c.faulty << "\n"
        << found;
    EXPECT_EQ(findingsOf(c.sound, ""), "") << c.sound;
  }
  // What has nothing to do with it is told all the same.
  for (const std::string condition : {"DisplayType=Spacee", "KeyName=Foo"}) {
    EXPECT_EQ(findingsOf(colors(pair("UIKBColorKeyReturn", "#101010FF") + white) +
                         rules(phone, rule(condition, "TextColor", "<string>Light</string>"))),
              "4:43 warning [low-contrast]\n6:8 warning [unknown-value]\n");
  }
}

}  // namespace
