// Faults planted in themes, each beside the same theme without it: what `check` tells of them, and
// where.

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "check_command.h"
#include "host/images/encode.h"

namespace {

using nlohmann::json;

TEST_F(Check, SectionsAndDefinitions) {
  const Case cases[] = {
      {section("schema", "<string>s.json</string>") + colors(""), "2:1 warning [unknown-section]",
       section("$schema", "<string>s.json</string>") + colors("")},
      {section("CustomColors", "<array/>"), "2:1 warning [unknown-section]", colors("")},
      {"", "1:1 warning [no-section]", gradients("")},
      {section("CustomColor", "<dict/>"), "3:1 error [section-type]", colors("")},
      {section("BackgroundImages", "<array/>"), "3:1 error [section-type]", images("")},
      {colors("") + "\n" + colors(""), "2:1 warning [duplicate-key]", colors("")},

      {colors(pair("Accent", "#FF8000")), "4:31 error [color-string]",
       colors(pair("Accent", "#FF8000FF"))},
      {colors(pair("Accent", "#GF8000FF")), "4:31 warning [color-digits]",
       colors(pair("Accent", " fF8000FF "))},
      {colors("<array><integer>7</integer><string>#FF8000FF</string></array>"),
       "4:8 error [color-name]", colors(pair("7", "#FF8000FF"))},
      {colors("<array><string>A</string><string>#FF8000FF</string><true/></array>"),
       "4:1 error [color-entry]", colors(pair("A", "#FF8000FF"))},
      {colors(pair("A", "#FF8000FF") + "\n" + pair("A", "#000000FF")), "5:8 warning [hidden-color]",
       colors(pair("A", "#FF8000FF") + "\n" + pair("a", "#000000FF"))},
      {colors(pair("UIKBColorBackgroundStandardGradientEnd", "#D1D5DBFF")),
       "4:8 warning [half-background]",
       colors(pair("UIKBColorBackgroundStandardGradientEnd", "#D1D5DBFF") +
              pair("UIKBColorBackgroundStandardGradientStart", "#D1D5DBFF"))},

      {gradients("<array><string>Glass</string></array>"), "4:1 error [gradient-entry]",
       gradients(pair("Glass", "UIKBColorKeyLetter"))},
      {gradients("<array><true/><string>UIKBColorKeyLetter</string></array>"),
       "4:8 error [gradient-name]", gradients(pair("true", "UIKBColorKeyLetter"))},
      {gradients("<array><string>Glass</string><real>1</real></array>"),
       "4:30 error [gradient-color]", gradients(pair("Glass", "UIKBColorKeyLetter"))},
      {gradients(pair("Glass", "UIKBColorKeyLeter")), "4:30 warning [unknown-color]",
       gradients(pair("Glass", "UIKBColorKeyLetter"))},
      {gradients(pair("A", "UIKBColorKeyLetter") + "\n" + pair("A", "UIKBColorKeyLetter")),
       "4:8 warning [hidden-gradient]",
       gradients(pair("A", "UIKBColorKeyLetter") + "\n" + pair("a", "UIKBColorKeyLetter"))},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(findingsOf(c.faulty), c.expected + "\n") << c.faulty;
    EXPECT_EQ(findingsOf(c.sound), "") << c.sound;
  }
}

TEST_F(Check, Rules) {
  const std::string phone = "iPhone-Standard";
  const std::string black = "<string>UIKBColorTextLetter</string>";
  const std::string sound = rules(phone, rule("DisplayType=Space", "TextColor", black));
  const auto with = [&](const std::string& condition) {
    return rules(phone, rule(condition, "TextColor", black));
  };
  const std::string font = "<string>Inter</string>";
  const Case cases[] = {
      {rules("iPhone-Standart", ""), "3:7 warning [unknown-style]", rules(phone, "")},
      {rules("iPad-Split", ""), "3:7 warning [unread-style]", rules("iPad-Standard", "")},
      {section("Styles", "<dict><key>iPhone-Standard</key><dict/></dict>"),
       "3:33 error [style-list]", rules(phone, "")},
      {rules(phone, "<dict/>"), "4:1 error [rule-pair]", sound},
      {rules(phone, "<array><string>*</string></array>"), "4:1 error [rule-pair]", sound},
      {rules(phone, "<array><integer>1</integer><dict/></array>"), "4:8 error [rule-condition]",
       sound},
      {rules(phone, "<array><string>KeyName=Nobody</string><array/></array>"),
       "4:39 error [rule-value]", sound},
      {with("DisplayTypes=Space"), "4:8 warning [unknown-term]", sound},
      {with("DisplayType=Space;"), "4:8 warning [unknown-term]", sound},
      {with("DisplayType=Shift,Spaces"), "4:8 warning [unknown-value]",
       with("DisplayType=Shift,Sp-ace")},
      {with("*;DisplayType=Space"), "4:8 warning [ignored-terms]", with("DisplayType=Space;*")},
      {with("DisplayType=Space;Row=Row3"), "4:1 warning [rule-never-matches]",
       with("DisplayType=Space;Row=Row4")},
      {with("DisplayType=Letter;ControlState=6"), "4:1 warning [rule-never-matches]",
       with("DisplayType=Shift;ControlState=6")},
      {rules(phone, rule("*", "Textcolor", black)), "4:32 warning [unknown-property]", sound},
      {rules(phone, rule("*", "EtchOffsetX", "<string>1</string>")), "4:54 error [property-type]",
       rules(phone, rule("*", "EtchOffsetX", "<true/>"))},
      {rules(phone, rule("*", "FontName", "<integer>1</integer>")), "4:51 error [property-type]",
       rules(phone, rule("*", "FontName", font))},
      {rules(phone, rule("*", "TransparentForeground", "<false/>")),
       "4:32 warning [rule-sets-nothing]",
       rules(phone, rule("*", "TransparentForeground", "<true/>"))},
      {rules(phone, rule("*", "EtchColor", "<string>#FF8000FF</string>")),
       "4:52 warning [unknown-color]", rules(phone, rule("*", "EtchColor", black))},
      {rules(phone, rule("*", "BackgroundGradient", "<string>UIKBColorKeyLetter</string>")),
       "4:61 warning [unknown-gradient]",
       rules(phone, rule("*", "BackgroundGradient", "<string>UIKBGradientKeyLetter</string>"))},
      {rules(phone, rule("Row=Row1", "FontName", font) + rule("Row=Row1,Row2", "FontName", font)),
       "4:1 warning [rule-overridden]",
       rules(phone, rule("Row=Row1", "FontName", font) + rule("Row=Row2", "FontName", font))},
      {rules(phone, rule("*", "FontName", "<string>Inter-SemiBlod</string>")),
       "4:51 warning [unknown-font]",
       rules(phone, rule("*", "FontName", "<string>Inter-SemiBold</string>"))},
      {rules(phone, rule("*", "FontName", "<string/>")), "4:51 warning [unknown-font]",
       rules(phone, rule("*", "FontName", "<string>Fontless Grotesque</string>"))},
      {rules(phone, rule("*",
                         "BackgroundGradient</key><string>UIKBGradientKeyLetter</string>"
                         "<key>TransparentForeground",
                         "<true/>")),
       "4:61 warning [property-without-effect]",
       rules(phone, rule("*", "BackgroundGradient", "<string>UIKBGradientKeyLetter</string>"))},
      {section("Styles",
               "<dict><key>iPad-Standard</key><array/><key>iPhone-Standard</key><array>\n" +
                   rule("*", "SecondaryTextColor", black) + "</array></dict>"),
       "4:61 warning [property-without-effect]",
       rules(phone, rule("*", "SecondaryTextColor", black))},
      {rules("iPad-Standard", rule("DisplayType=Letter", "SecondaryTextColor", black) +
                                  rule("KeyName=Comma,Full-Stop", "SecondaryTextColor", black)),
       "4:1 warning [rule-overridden]",
       rules("iPad-Standard", rule("DisplayType=Letter", "SecondaryTextColor", black) +
                                  rule("KeyName=Comma", "SecondaryTextColor", black))},
      {with("DisplayType=Space;\nRow=Row4"), "5:1 warning [unknown-term]",
       with("DisplayType=Space;Row=Row4")},
      // No tablet's key is left to the phone's list once tablets have their own.
      {section("Styles",
               "<dict><key>iPad-Standard</key><array/><key>iPhone-Standard</key><array>\n" +
                   rule("DisplayType=Dismiss", "FontName", font) + "</array></dict>"),
       "4:1 warning [rule-never-matches]",
       rules(phone, rule("DisplayType=Dismiss", "FontName", font))},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(findingsOf(c.faulty, "--ignore low-contrast"), c.expected + "\n") << c.faulty;
    EXPECT_EQ(findingsOf(c.sound), "") << c.sound;
  }
}

TEST_F(Check, Pictures) {
  const std::string key = "Portrait;iPhone-Standard";
  const std::string sound = images(image(key, "dots.png"));
  const Case cases[] = {
      {images("<key>Portrait</key><true/>"), "4:20 error [image-value]", images("")},
      {images(image(key, "")), "4:36 error [image-missing]", sound},
      {images(image(key, "dot.png")), "4:36 error [image-missing]", sound},
      {images(image(key, "letter.png")), "4:36 error [image-broken]\n4:36 error [image-broken]",
       sound},
      {images(image(key, "../T.theme/dots.png")), "4:36 error [image-outside]",
       images(image(key, "x/../dots.png"))},
      {images(image(key, "/var/../../dots.png")), "4:36 error [image-outside]", sound},
      {images(image(key, "/dots.png")), "4:36 warning [image-on-device]", sound},
      {images(image(key, "alone.png")), "4:36 warning [missing-sibling]", sound},
      {images(image(key, "half.png")), "4:36 warning [sibling-size]", sound},
      {images(image(key, "lost.png")), "4:36 error [image-outside]", sound},
      {images(image("iPhone-Standard;Portrait", "dots.png")), "4:1 warning [unknown-image-key]",
       sound},
      {images(image(key, "square.png")), "4:36 warning [image-stretched]", sound},
      {images(image("Portrait", "dots.png")), "4:20 warning [image-stretched]", sound},
      {images(image("Portrait;iPad-Standard", "dots.png")), "4:34 warning [image-stretched]",
       sound},
      {images(image("portrait;iPhone-Standard", "dots.png")), "4:1 warning [unknown-image-key]",
       sound},
      {images(image("Portrait; iPhone-Standard", "dots.png")), "4:1 warning [unknown-image-key]",
       sound},
      {images(image("Portrait;iPhone-Dictation;1", "dots.png")), "4:1 warning [image-never-shown]",
       images(image("Portrait;iPhone-Dictation", "dots.png"))},
      {images(image("Portrait;iPhone-Standard;4", "dots.png")), "4:1 warning [image-never-shown]",
       images(image("Portrait;iPhone-Standard;3", "dots.png"))},
      {images(image("Portrait;iPhone-Standard;1;3", "dots.png")), "4:1 warning [image-never-shown]",
       images(image("Portrait;iPhone-Standard;1;770", "dots.png"))},
      // With 2 there, 258 and 514 are the only others that are asked for before 1 alone.
      {images(image("Portrait;iPhone-Standard;1", "dots.png") +
              image("Portrait;iPhone-Standard;1;2", "dots.png")),
       "4:38 warning [image-never-shown]",
       images(image("Portrait;iPhone-Standard;1", "dots.png") +
              image("Portrait;iPhone-Standard;1;258", "dots.png"))},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(findingsOf(c.faulty, "--ignore low-contrast"), c.expected + "\n") << c.faulty;
    EXPECT_EQ(findingsOf(c.sound, "--ignore low-contrast"), "") << c.sound;
  }
}

TEST_F(Check, TextAgainstItsKey) {
  const auto face = [](const std::string& color) {
    return colors(pair("UIKBColorKeyReturn", color));
  };
  const auto ink = [](const std::string& name, const std::string& color) {
    return colors(pair(name, color));
  };
  const Case cases[] = {
      // Black reaches 4.5 on a grey of 0x75, and not on one of 0x74.
      {face("#747474FF"), "4:43 warning [low-contrast]", face("#757575FF")},
      // Letters are large: 3 is enough, which a grey of 0x94 has on the white of their keys.
      {ink("UIKBColorTextLetter", "#969696FF"), "4:44 warning [low-contrast]",
       ink("UIKBColorTextLetter", "#909090FF")},
      // The same greys through a veil over black.
      {ink("UIKBColorTextLetter", "#00000066"), "4:44 warning [low-contrast]",
       ink("UIKBColorTextLetter", "#00000071")},
      {ink("UIKBColorTextShiftLocked", "#FDFDFEFF"), "4:49 warning [low-contrast]",
       ink("UIKBColorTextShiftLocked", "#000000FF")},
      {ink("UIKBColorTextDictationDone", "#AEB4BEFF"), "4:51 warning [low-contrast]",
       ink("UIKBColorTextDictationDone", "#000000FF")},
      {ink("UIKBColorAlertTextSpacePressed", "#FFFFFF20"), "4:55 warning [low-contrast]",
       ink("UIKBColorAlertTextSpacePressed", "#FFFFFFFF")},
      {ink("UIKBColorTextLetterPressed", "#E9EBEEFF"), "4:51 warning [low-contrast]",
       ink("UIKBColorTextLetterPressed", "#000000FF")},
      // Of a disabled key the theme's text is held to the same, the system's to what it has itself.
      {ink("UIKBColorTextLetterDisabled", "#A0A0A0FF"), "4:52 warning [low-contrast]",
       ink("UIKBColorTextLetterDisabled", "#606060FF")},
      {ink("UIKBColorKeySpaceDisabled", "#404040FF"), "4:50 warning [low-contrast]",
       ink("UIKBColorKeySpaceDisabled", "#FFFFFFFF")},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(findingsOf(c.faulty), c.expected + "\n") << c.faulty;
    EXPECT_EQ(findingsOf(c.sound), "") << c.sound;
  }
}

TEST_F(Check, MeasuresPicturesOfBothScales) {
  const auto paint = [&](const std::string& name, int scale, std::uint8_t grey) {
    write("T.theme/" + name, host::images::encodePng(host::images::solid(320 * scale, 216 * scale,
                                                                         grey, grey, grey, 0xff)));
  };
  paint("night.png", 1, 0xd0);
  paint("night@2x.png", 2, 0x18);
  const auto over = [](const std::string& picture) {
    return images(image("Portrait;iPhone-Standard", picture)) +
           rules("iPhone-Standard", rule("*", "TransparentForeground", "<true/>"));
  };
  EXPECT_EQ(findingsOf(over("night.png")), "4:36 warning [low-contrast]\n");
  EXPECT_EQ(findingsOf(over("dots.png")), "");
}

TEST_F(Check, NamesTheWholePathOfADuplicate) {
  const std::string black = "<string>UIKBColorTextLetter</string>";
  const std::string twice =
      rules("iPhone-Standard", rule("*", "TextColor</key>" + black + "\n<key>TextColor", black));
  EXPECT_EQ(findingsOf(twice), "4:32 warning [duplicate-key]\n");
  const json report = json::parse(prismal("check --format json T.theme", "2>/dev/null").output);
  EXPECT_EQ(report["findings"][0]["path"], "Styles.iPhone-Standard[0][1].TextColor");
}

TEST_F(Check, PointsAtTheRuleThatHasTheLastWordOnAText) {
  const std::string white = colors(pair("White", "#FFFFFFFF"));
  const auto text = [](const std::string& condition) {
    return rule(condition, "TextColor", "<string>White</string>");
  };
  const std::string last =
      rule("ControlState=1", "TextColor", "<string>UIKBColorTextLetter</string>");
  EXPECT_EQ(findingsOf(white + rules("iPhone-Standard", text("KeyName=Space-Key") + last)),
            "6:68 warning [low-contrast]\n");
  EXPECT_EQ(
      findingsOf(white + rules("iPhone-Standard", text("KeyName=Space-Key;ControlState=1") + last)),
      "6:1 warning [rule-overridden]\n");
}

TEST_F(Check, Suggests) {
  struct Suggestion {
    std::string theme;
    std::string means;
  };
  const std::string black = "<string>UIKBColorTextLetter</string>";
  const auto with = [&](const std::string& condition) {
    return rules("iPhone-Standard", rule(condition, "TextColor", black));
  };
  const Suggestion cases[] = {
      {section("Style", "<dict/>") + images(""), "Styles"},
      {rules("iphone-alert", ""), "iPhone-Alert"},
      {with("Keyname=Space-Key"), "KeyName="},
      {with("KeyName=Space-Kye"), "Space-Key"},
      {with("Row=3"), "Row3"},
      {with("DisplayType=Ltter"), "Letter"},
      {with("KeyName=Space"), "Space-Key"},
      {with("ControlState=pressed"), "1"},
      {section("CustomGradient", "<array/>") + images(""), "CustomLinearGradient"},
      {rules("iPhone-Standard", rule("*", "BackgroundColor", black)), "BackgroundGradient"},
      {images(image("iPhone-Standard;Portrait", "dots.png")), "Portrait;iPhone-Standard"},
      {rules("iPhone-Standard", rule("*", "FontNme", "<string>Inter</string>")), "FontName"},
      {images(image("Landscpe;iPad-Split", "dots.png")), "Landscape;iPad-Split"},
      {colors(pair("Accent", "#FF8000FF")) + gradients(pair("Glass", "Acent")), "Accent"},
  };
  for (const Suggestion& c : cases) {
    EXPECT_TRUE(messageOf(c.theme).ends_with("; did you mean \"" + c.means + "\"?"))
        << messageOf(c.theme);
  }
  EXPECT_EQ(messageOf(rules("Preferences", "")), "\"Preferences\" is no visual style");
  // Another number is no slip of the finger.
  for (const std::string state : {"4", "0", "Row1"}) {
    EXPECT_TRUE(messageOf(with("ControlState=" + state)).ends_with("; there are 1, 2, 3, 6 and 7"))
        << messageOf(with("ControlState=" + state));
  }
  EXPECT_TRUE(messageOf(with("Row=Row5")).ends_with("; there are Row1, Row2, Row3 and Row4"));
}

TEST_F(Check, TellsEveryLineThatTheLibraryLogs) {
  write(
      "T.theme/theme.plist",
      "<dict>" + colors(pair("A", "#1") + "<string>A</string><array><true/><true/></array>") +
          gradients("<array/><array><true/><true/></array><array><string>G</string><true/></array>"
                    "<array><string>G</string><string>A</string><data/></array>") +
          section("Styles",
                  "<dict><key>iPhone-Alert</key><true/><key>iPhone-Standard</key><array>"
                  "<true/><array/><array><true/><dict/></array>"
                  "<array><string>*</string><true/></array></array></dict>") +
          "</dict>");
  const json report = json::parse(prismal("check --format json T.theme", "2>/dev/null").output);
  const auto isTold = [&](const std::string& line) {
    return std::ranges::any_of(report["findings"],
                               [&](const json& finding) { return finding["log"] == line; });
  };
  int lines = 0;
  for (const std::string style : {"standard", "alert"}) {
    std::istringstream log(prismal("render T.theme -o x.png --style " + style).output);
    const std::regex isFault("PM: (?!Clear|Enabled|InitColorCache).*");
    for (std::string line; std::getline(log, line);) {
      if (!std::regex_match(line, isFault)) continue;
      ++lines;
      EXPECT_TRUE(isTold(line)) << line;
    }
  }
  EXPECT_GE(lines, 11);
}

TEST_F(Check, NamesThePathInABinaryList) {
  // {"CustomColor": [["A", 7]]}, written by hand.
  const std::string objects = std::string("\xD1\x01\x02") +
                              "\x5B"
                              "CustomColor" +
                              "\xA1\x03" + "\xA2\x04\x05" +
                              "\x51"
                              "A" +
                              std::string("\x10\x07", 2);
  std::string bytes = "bplist00" + objects;
  for (const int offset : {8, 11, 23, 25, 28, 30}) bytes += static_cast<char>(offset);
  bytes += std::string(6, '\0') + "\x01\x01" + std::string(7, '\0') + "\x06" +
           std::string(8, '\0') + std::string(7, '\0') + static_cast<char>(8 + objects.size());
  write("b.plist", bytes);
  EXPECT_EQ(prismal("check --format concise b.plist", "2>/dev/null").output,
            "b.plist: error: CustomColor[0][1]: an integer in place of a colour string "
            "[color-string]\n");
}

TEST_F(Check, HostileAndForeignLists) {
  struct Foreign {
    std::string bytes;
    int status;
    std::string says;
  };
  std::string nested;
  for (int i = 0; i < 400; ++i) nested += "<array>";
  for (int i = 0; i < 400; ++i) nested += "</array>";
  std::string many = "<dict>";
  for (int i = 0; i < 5000; ++i) many += "<key>k" + std::to_string(i) + "</key><true/>";
  std::string list;
  for (int i = 0; i < 5000; ++i) list += rule("Row=Row1", "FontName", "<string>Inter</string>");
  const Foreign cases[] = {
      {"", 2, "x.plist:1:1: error: no property list"},
      {"<dict><key>a</key></dict>", 2, "x.plist:1:7: error: <key> without a value [unreadable]"},
      {"\x89PNG", 2, "[unreadable]"},
      {"\xFF\xFE<", 2, "a text in UTF-16, where UTF-8 is read [unreadable]"},
      {"bplist00", 2, "x.plist: error: "},
      {"<array/>", 1,
       "1:1: error: an array in place of a dictionary; the theme is empty [root-type]"},
      {"<string>\x1b[31m</string>", 2, "[unreadable]"},
      {"<dict><key>WindowFrame</key><string>{{0, 0}, {1, 1}}</string></dict>", 1,
       "[unknown-section]"},
      {"<dict>" + colors(nested) + "</dict>", 1, "[color-entry]"},
      {many + "</dict>", 1, "\"k4999\" is no section [unknown-section]"},
      {"{\"CustomColor\": []}", 2, "prismal convert makes a property list of JSON [unreadable]"},
      {"<dict>" + rules("iPhone-Standard", list) + "</dict>", 1, "[too-many-rules]"},
      {"<dict>" + rules("iPhone-Standard", "") + images(image("Portrait", std::string(5000, 'x'))) +
           "</dict>",
       1, "[image-broken]"},
  };
  for (const Foreign& c : cases) {
    write("x.plist", c.bytes);
    const Outcome outcome = prismal("check --format concise x.plist", "2>/dev/null");
    EXPECT_EQ(outcome.status, c.status) << outcome.output;
    EXPECT_NE(outcome.output.find(c.says), std::string::npos) << c.says << "\n" << outcome.output;
  }
  EXPECT_EQ(prismal("check nothing.plist").status, 2);
}

}  // namespace
