// What keys are called, and which names the keyboard asks for.

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "command.h"

namespace {

using nlohmann::json;

class Keys : public Command {};

TEST_F(Keys, AreToldAsRenderTellsThem) {
  for (const std::string options :
       {"--keyplane small-letters", "--device tablet --keyplane numbers --dictation-key yes",
        "--device tablet-split --style alert --orientation landscape --keyplane capital-letters"}) {
    const Outcome told = prismal("keys --json " + options);
    ASSERT_EQ(told.status, 0) << told.output;
    const json keyplanes = json::parse(told.output);
    ASSERT_EQ(keyplanes.size(), 1U);
    ASSERT_EQ(
        prismal("render --system --quiet -o - --keys x.json " + options + " >/dev/null").status, 0);
    json drawn = jsonAt("x.json");
    for (const char* member : {"size", "scale", "background"}) drawn.erase(member);
    for (auto& key : drawn["keys"]) {
      key.erase("pixels");
      key.erase("traits");
    }
    EXPECT_EQ(keyplanes[0], drawn) << options;
  }
}

TEST_F(Keys, TableIsHeadedByTheTermsOfConditions) {
  const Outcome told = prismal("keys --device tablet");
  EXPECT_EQ(told.status, 0);
  for (const char* text :
       {"KeyName=", "DisplayTypeHint=", "ControlState=", "\nPortrait_Capital-Letters ",
        "\nPortrait_Numbers-And-Punctuation-Alternate ", "\n€ ", "  Shift-Key-Right ", " Row4 "}) {
    EXPECT_NE(told.output.find(text), std::string::npos) << text;
  }
}

TEST_F(Keys, NamesAreToldWithTheirValueAndTheirUse) {
  const Outcome told = prismal("names --json");
  ASSERT_EQ(told.status, 0) << told.output;
  struct Case {
    std::string name;
    std::string kind;
    std::string value;
    std::string use;
  };
  const Case cases[] = {
      {"UIKBColorKeyLetter", "color", "#FDFDFEFF", "gradient UIKBGradientKeyLetter"},
      {"UIKBColorTextReturnPressed", "color", "#000000FF", "text of return keys, pressed"},
      {"UIKBColorTextEtch", "color", "#FFFFFF00", "etch of all keys"},
      {"UIKBColorTextShiftOn", "color", "#000000FF", "text of the shift key, on"},
      {"UIKBGradientAlertKeySpace", "gradient", "UIKBColorAlertKeySpace",
       "face of space keys, alert"},
      {"UIKBGradientBackgroundStandard", "gradient", "UIKBColorBackgroundStandard",
       "behind the keys"},
      {"UIKBColorBackgroundAlertGradientEnd", "color", "#2E2F33FF",
       "behind the keys, once a theme defines both ends, alert"},
      {"UIKBColorDictationLevel", "color", "#007AFFFF", "bars while dictating"},
  };
  const json names = json::parse(told.output);
  for (const Case& c : cases) {
    const auto found =
        std::ranges::find_if(names, [&](const json& name) { return name["name"] == c.name; });
    ASSERT_NE(found, names.end()) << c.name;
    EXPECT_EQ((*found)["kind"], c.kind);
    EXPECT_EQ((*found)["value"], c.value);
    EXPECT_EQ((*found)["uses"][0], c.use);
  }
  // A name that nothing uses would be a lie to authors.
  for (const json& name : names) EXPECT_FALSE(name["uses"].empty()) << name;
}

}  // namespace
