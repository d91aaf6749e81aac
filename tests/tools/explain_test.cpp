// What `explain` says of keys is what the keyboard does with them.

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "command.h"
#include "host/images/encode.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

class Explain : public Command {
 protected:
  Outcome run(const std::string& arguments) const {
    return prismal("explain --quiet " + arguments);
  }
  /// The answer to a question that the theme has one to, whose exit status is `status`.
  json told(const std::string& arguments, int status = 0) const {
    const Outcome outcome = prismal("explain --quiet --json " + arguments, "2>/dev/null");
    EXPECT_EQ(outcome.status, status) << arguments;
    json answer = json::parse(outcome.output, nullptr, false);
    EXPECT_FALSE(answer.is_discarded()) << arguments << "\n" << outcome.output;
    return answer;
  }
};

/// The traits of each step of a scenario.
std::vector<json> resultsOf(const std::string& lines) {
  std::vector<json> results;
  for (std::size_t start = 0; start < lines.size();) {
    const std::size_t end = lines.find('\n', start);
    const json step = json::parse(lines.substr(start, end - start));
    if (step["do"] == "traits") results.push_back(step["result"]);
    start = end + 1;
  }
  return results;
}

constexpr const char* kPlanted = R"(<dict>
  <key>CustomColor</key><array>
    <array><string>Red</string><string>#FF0000FF</string></array>
    <array><string>UIKBColorTextEtch</string><string>#00FF0080</string></array>
  </array>
  <key>CustomLinearGradient</key><array>
    <array><string>Mix</string><string>Red</string><string>UIKBColorKeyLetter</string></array>
  </array>
  <key>Styles</key><dict>
    <key>iPhone-Standard</key><array>
      <array><string>*</string><dict>
        <key>TextColor</key><string>Red</string><key>FontName</key><string>A</string>
        <key>BackgroundGradient</key><string>Mix</string></dict></array>
      <array><string>Row=Row1;ControlState=1,2</string><dict/></array>
      <array><string>KeyName=Return-Key;keyname=x</string><dict/></array>
      <string>broken</string>
      <array><string>DisplayType=Return</string><dict>
        <key>TransparentForeground</key><true/><key>BackgroundGradient</key><string>Mix</string>
        <key>TextColor</key><string>Nobody</string><key>EtchOffsetX</key><integer>2</integer>
        </dict></array>
      <array><string>DisplayType=Return</string><string>no dictionary</string></array>
      <array><string>DisplayType=Return;*</string><dict><key>FontName</key><integer>1</integer>
        <key>TransparentForeground</key><false/><key>TextColor</key><string>Red</string></dict>
      </array>
    </array>
    <key>iPad-Alert</key><string>no list</string>
  </dict>
</dict>)";

/// A theme, an example's folder or the planted one, and a keyplane to look at it on.
struct Keyplane {
  std::string name;
  std::string theme;
  std::string options;
  int idiom;
};

class ExplainOfEveryKey : public Explain, public testing::WithParamInterface<Keyplane> {
 protected:
  /// The theme's file; its pictures don't matter to keys.
  static std::string themeBytes() {
    if (GetParam().theme.empty()) return kPlanted;
    std::ifstream file(fs::path(EXAMPLES) / GetParam().theme / "theme.plist", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

/// What the factory returns for the same keys of the same keyplane when a scenario asks it.
TEST_P(ExplainOfEveryKey, HasTheTraitsThatReplayReturns) {
  const std::string& options = GetParam().options;
  write("theme.plist", themeBytes());
  ASSERT_EQ(prismal("render --system --keys system.json " + options).status, 0);
  json steps = {{{"do", "load"}}};
  std::vector<json> explained;
  const json system = jsonAt("system.json");
  for (const json& key : system["keys"]) {
    const json answer = told("theme.plist " + options + " --key " + key["name"].get<std::string>());
    explained.push_back(answer["traits"]);
    json asked = answer["key"];
    asked.erase("controlState");
    asked.erase("texts");
    steps.push_back({{"do", "traits"},
                     {"key", asked},
                     {"keyplane", answer["keyplane"]},
                     {"system", key["traits"]}});
  }
  const json scenario = {
      {"host", {{"userInterfaceIdiom", GetParam().idiom}}},
      {"files",
       {{"/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist",
         {{"text", themeBytes()}}}}},
      {"steps", steps}};
  write("scenario.json", scenario.dump());
  const Outcome played = prismal("replay scenario.json", "2>/dev/null");
  ASSERT_EQ(played.status, 0);
  ASSERT_GT(explained.size(), 20U);
  EXPECT_EQ(explained, resultsOf(played.output));
}

constexpr const char* kPhone = "--press Shift-Key --shift on --disable D";
constexpr const char* kTablet =
    "--device tablet --orientation landscape --keyplane numbers --press 7 --disable return";

INSTANTIATE_TEST_SUITE_P(
    Themes, ExplainOfEveryKey,
    testing::Values(Keyplane{"Dusk", "Dusk.theme", kTablet, 1},
                    Keyplane{"Strata", "Strata.theme", kPhone, 0},
                    Keyplane{"Linen", "Linen.theme", "--device phone-4 --style alert", 0},
                    Keyplane{"Tides", "Tides.theme",
                             "--device tablet-split --dictation-key yes --press .", 1},
                    Keyplane{"Planted", "", kTablet, 1}),
    [](const auto& param) { return param.param.name; });

class ExplainPlanted : public Explain {
 protected:
  ExplainPlanted() { write("planted.plist", kPlanted); }
};

TEST_F(ExplainPlanted, TellsWhatBecameOfEveryRule) {
  const json rules = told("planted.plist --key return")["rules"];
  const json none = json::array();
  const auto lost = [](const char* property, int to) {
    return json{{"property", property}, {"to", to}};
  };
  const std::string pair = "PM: Style must be the pair of condition and dictionary - Not Array";
  const json expected = {
      {{"rule", 0},
       {"line", 11},
       {"condition", "*"},
       {"matches", true},
       {"failedTerm", nullptr},
       {"testedAgainst", nullptr},
       {"won", {"FontName"}},
       {"lost", {lost("BackgroundGradient", 4), lost("TextColor", 6)}}},
      {{"rule", 1},
       {"line", 14},
       {"condition", "Row=Row1;ControlState=1,2"},
       {"matches", false},
       {"failedTerm", "Row=Row1"},
       {"testedAgainst", "Row4"},
       {"won", none},
       {"lost", none}},
      {{"rule", 2},
       {"line", 15},
       {"condition", "KeyName=Return-Key;keyname=x"},
       {"matches", false},
       {"failedTerm", "keyname=x"},
       {"testedAgainst", nullptr},
       {"won", none},
       {"lost", none}},
      {{"rule", 3},
       {"line", 16},
       {"condition", nullptr},
       {"matches", false},
       {"failedTerm", nullptr},
       {"testedAgainst", nullptr},
       {"won", none},
       {"lost", none},
       {"message", pair}},
      {{"rule", 4},
       {"line", 17},
       {"condition", "DisplayType=Return"},
       {"matches", true},
       {"failedTerm", nullptr},
       {"testedAgainst", nullptr},
       {"won", {"TransparentForeground", "EtchOffsetX"}},
       {"lost", {lost("BackgroundGradient", 4), lost("TextColor", 6)}}},
      {{"rule", 5},
       {"line", 21},
       {"condition", "DisplayType=Return"},
       {"matches", false},
       {"failedTerm", nullptr},
       {"testedAgainst", nullptr},
       {"won", none},
       {"lost", none},
       {"message", "PM: Style value must be dictionary."}},
      {{"rule", 6},
       {"line", 22},
       {"condition", "DisplayType=Return;*"},
       {"matches", true},
       {"failedTerm", nullptr},
       {"testedAgainst", nullptr},
       {"won", {"TextColor"}},
       {"lost", none}},
  };
  EXPECT_EQ(rules, expected);
}

TEST_F(ExplainPlanted, TellsWhereEveryPropertyIsFrom) {
  struct Case {
    std::string options;
    std::string property;
    json value;
    json color;
    json rule;
    json line;
  };
  const json mix = {{"startColor", "Red"}, {"endColor", "UIKBColorKeyLetter"}};
  const Case cases[] = {
      {"--key q", "BackgroundGradient", mix, {"#FF0000FF", "#FDFDFEFF"}, 0, 11},
      {"--key q", "TransparentForeground", false, nullptr, nullptr, nullptr},
      {"--key q", "TextColor", "Red", "#FF0000FF", 0, 11},
      {"--key q", "EtchColor", "UIKBColorTextEtch", "#00FF0080", nullptr, nullptr},
      {"--key q", "EtchOffsetY", 1, nullptr, nullptr, nullptr},
      {"--key q", "FontName", "A", nullptr, 0, 11},
      {"--key return", "BackgroundGradient", nullptr, nullptr, 4, 17},
      {"--key return", "TransparentForeground", true, nullptr, 4, 17},
      {"--key return", "TextColor", "Red", "#FF0000FF", 6, 22},
      {"--key return", "EtchOffsetX", 2, nullptr, 4, 17},
      {"--key q --style alert", "TextColor", "UIKBColorAlertTextLetter", "#FFFFFFFF", nullptr,
       nullptr},
  };
  for (const Case& c : cases) {
    const bool isThemed = c.options.find("alert") == std::string::npos;
    const json answer = told("planted.plist " + c.options, isThemed ? 0 : 1);
    const auto& properties = answer["properties"];
    ASSERT_EQ(properties.size(), 8U);
    const auto found = std::ranges::find_if(
        properties, [&](const json& property) { return property["property"] == c.property; });
    ASSERT_NE(found, properties.end()) << c.property;
    const json expected = {{"property", c.property},
                           {"value", c.value},
                           {"color", c.color},
                           {"rule", c.rule},
                           {"line", c.line}};
    EXPECT_EQ(*found, expected) << c.options;
  }
}

TEST_F(ExplainPlanted, TellsWhatConditionsCanTest) {
  const json answer =
      told("planted.plist --device tablet --keyplane numbers --key More-Key --press More-Key");
  const json key = {{"name", "More-Key"},
                    {"displayType", 5},
                    {"displayTypeHint", 0},
                    {"displayRowHint", 4},
                    {"state", 4},
                    {"controlState", 1},
                    {"texts",
                     {{"KeyName", "More-Key"},
                      {"DisplayType", "More"},
                      {"DisplayTypeHint", "0"},
                      {"Row", "Row4"},
                      {"ControlState", "1"}}}};
  EXPECT_EQ(answer["key"], key);
  EXPECT_EQ(answer["keyplane"], json({{"name", "Portrait_Numbers-And-Punctuation"},
                                      {"visualStyle", 8},
                                      {"type", 2},
                                      {"isLetters", false},
                                      {"isShiftKeyplane", false}}));
  EXPECT_EQ(answer["visualStyle"], "iPad-Standard");
}

TEST_F(ExplainPlanted, TextSaysTheSame) {
  const Outcome outcome = run("planted.plist --key return");
  EXPECT_EQ(outcome.status, 0);
  for (const char* text :
       {"Return-Key (return) · phone-3.5 · portrait · standard · small-letters\n",
        "ControlState=     3  (state 2)\n", "\nTextColor              Red ", "rule 6, line 22\n",
        "removed", "RULES of iPhone-Standard, planted.plist\n", "fails at Row=Row1: it is Row4\n",
        "fails: \"keyname=x\" is no term\n", "malformed: PM: Style value must be dictionary.\n",
        "sets TransparentForeground, EtchOffsetX; loses BackgroundGradient to 4, TextColor to 6\n",
        "\nPortrait;iPhone-Standard  "}) {
    EXPECT_NE(outcome.output.find(text), std::string::npos) << text << "\n" << outcome.output;
  }
  EXPECT_NE(run("planted.plist --key q --device tablet --style alert")
                .output.find("none: iPad-Alert is no array"),
            std::string::npos);
  EXPECT_NE(run("planted.plist --key q --style alert").output.find("the theme has no iPhone-Alert"),
            std::string::npos);
}

TEST_F(ExplainPlanted, HitsOfARule) {
  struct Case {
    std::string options;
    std::size_t keyplanes;
    std::size_t keys;  ///< of each
    json states;       ///< of each
  };
  const Case cases[] = {
      {"--rule 6 --style iPhone-Standard", 32, 1, {2, 4, 1}},
      {"--rule 6 --style iPad-Split", 32, 1, {2, 4, 1}},
      {"--rule 6 --style iPhone-Standard --device phone-4", 8, 1, {2, 4, 1}},
      {"--rule 1 --style iPhone-Standard --device phone-3.5 --keyplane numbers", 2, 10, {4, 1}},
      {"--rule 0 --style iPhone-Standard --device phone-3.5 --keyplane numbers --orientation "
       "landscape",
       1,
       32,
       {2, 4, 1}},
  };
  for (const Case& c : cases) {
    const json answer = told("planted.plist " + c.options);
    EXPECT_EQ(answer["list"], "iPhone-Standard");
    EXPECT_EQ(answer["keyplanes"].size(), c.keyplanes) << c.options;
    for (const json& keyplane : answer["keyplanes"]) {
      EXPECT_EQ(keyplane["style"], "standard");
      EXPECT_EQ(keyplane["keys"].size(), c.keys) << c.options;
      for (const json& key : keyplane["keys"]) EXPECT_EQ(key["states"], c.states) << key;
    }
  }
  for (const int nothing : {2, 3, 5}) {
    const json answer =
        told("planted.plist --style iPhone-Standard --rule " + std::to_string(nothing), 1);
    EXPECT_EQ(answer["keyplanes"], json::array());
  }
}

/// Whoever is hit in a state is one of whom `explain --key` says so in that state, and nobody else.
TEST_F(ExplainPlanted, HitsAgreeWithTheKeysOwnExplanation) {
  const std::string options = "planted.plist --keyplane small-letters --device phone-3.5 ";
  const json hits =
      told(options + "--orientation portrait --rule 1 --style iPhone-Standard")["keyplanes"][0];
  for (const std::string key : {"q", "p", "a", "return"}) {
    const bool isHit =
        std::ranges::any_of(hits["keys"], [&](const json& hit) { return hit["label"] == key; });
    std::string question = options;
    question.append("--key ").append(key);
    const json resting = told(question)["rules"][1];
    const json pressed = told(question.append(" --press ").append(key))["rules"][1];
    EXPECT_EQ(pressed["matches"], isHit) << key;
    EXPECT_EQ(resting["matches"], false) << key;
  }
}

TEST_F(ExplainPlanted, PictureOutlinesTheKeysThatAreHit) {
  const std::string view = "--device phone-3.5 --orientation portrait --keyplane small-letters ";
  ASSERT_EQ(run("planted.plist --rule 6 --style iPhone-Standard -o hits.png " + view).status, 0);
  ASSERT_EQ(
      prismal("render planted.plist --quiet --dictation-key yes --keys keys.json " + view).status,
      0);
  const auto marked = picture("hits.png");
  const json drawn = jsonAt("keys.json");
  for (const json& key : drawn["keys"]) {
    // In the middle of the left edge; the sheet leaves 32 pixels around the keyboard.
    const int x = 32 + key["pixels"][0].get<int>();
    const int y = 32 + key["pixels"][1].get<int>() + key["pixels"][3].get<int>() / 2;
    EXPECT_EQ(marked.at(x, y) == 0xffe6007e, key["name"] == "Return-Key") << key["name"];
  }
  // A sheet of everything there is.
  EXPECT_EQ(run("planted.plist --rule 0 --style iPad-Standard -o all.png").status, 0);
  EXPECT_GT(picture("all.png").height, 1000);
  EXPECT_EQ(run("planted.plist --rule 3 --style iPhone-Standard -o none.png").status, 1);
  EXPECT_FALSE(fs::exists(folder() / "none.png"));
}

TEST_F(Explain, BackgroundKeysOfEveryForm) {
  struct Tried {
    std::string key;
    json file;  ///< below the theme's folder; null: none there
    bool hit;
    std::string reason;
  };
  struct Case {
    std::string options;
    std::vector<std::pair<std::string, std::string>> images;
    std::vector<Tried> chain;
  };
  write("T.theme/good.png", host::images::encodePng(host::images::solid(4, 4, 0, 0xff, 0, 0xff)));
  write("T.theme/sharp.png", "not needed where the sibling is");
  write("T.theme/sharp@2x.png",
        host::images::encodePng(host::images::solid(8, 8, 0, 0xff, 0, 0xff)));
  write("T.theme/broken.png", "no picture at all");
  const Case cases[] = {
      {"",
       {},
       {{"Portrait;iPhone-Standard;1;2", nullptr, false, ""},
        {"Portrait;iPhone-Standard;1", nullptr, false, ""},
        {"Portrait;iPhone-Standard", nullptr, false, ""},
        {"Portrait", nullptr, false, ""}}},
      {"--dictation-key yes --international-key no",
       {{"Portrait;iPhone-Standard;1;514", "good.png"}},
       {{"Portrait;iPhone-Standard;1;770", nullptr, false, ""},
        {"Portrait;iPhone-Standard;1;258", nullptr, false, ""},
        {"Portrait;iPhone-Standard;1;514", "good.png", true, ""}}},
      {"--device tablet-split --orientation landscape",
       {{"Landscape;iPad-Split;1", "broken.png"},
        {"Landscape;iPad-Split", "broken.png"},
        {"Landscape", "sharp.png"}},
       {{"Landscape;iPad-Split;1;2", nullptr, false, ""},
        {"Landscape;iPad-Split;1", "broken.png", false, "no picture"},
        {"Landscape;iPad-Split", "broken.png", false, "no picture"},
        {"Landscape", "sharp.png", true, ""}}},
      {"--style alert",
       {{"Portrait;iPhone-Alert;1;2", "missing.png"}, {"Portrait", "broken.png"}},
       {{"Portrait;iPhone-Alert;1;2", "missing.png", false, "No such file"},
        {"Portrait;iPhone-Alert;1", nullptr, false, ""},
        {"Portrait;iPhone-Alert", nullptr, false, ""},
        {"Portrait", "broken.png", false, "no picture"}}},
      {"",
       {{"Portrait;iPhone-Standard;1;2", "good.png"}, {"Portrait", "good.png"}},
       {{"Portrait;iPhone-Standard;1;2", "good.png", true, ""}}},
  };
  for (const Case& c : cases) {
    std::string images;
    for (const auto& [key, file] : c.images) {
      images.append("<key>").append(key).append("</key><string>").append(file).append("</string>");
    }
    write("T.theme/theme.plist",
          "<dict><key>BackgroundImages</key><dict>" + images + "</dict></dict>");
    const bool shows = c.chain.back().hit;
    const json chain = told("T.theme --key space " + c.options, shows ? 0 : 1)["background"];
    ASSERT_EQ(chain.size(), c.chain.size()) << chain;
    for (std::size_t i = 0; i < c.chain.size(); ++i) {
      const auto& [key, file, hit, reason] = c.chain[i];
      EXPECT_EQ(chain[i]["key"], key);
      const json path =
          file.is_null() ? json()
                         : json("/var/mobile/Library/Prismal/Themes/T/" + file.get<std::string>());
      EXPECT_EQ(chain[i]["path"], path) << key;
      EXPECT_EQ(chain[i]["hit"], hit) << key;
      EXPECT_TRUE(chain[i].value("reason", "").starts_with(reason)) << chain[i];
      EXPECT_EQ(chain[i].contains("reason"), !reason.empty()) << chain[i];
    }
  }
}

TEST_F(Explain, StatusSaysWhetherTheThemeShows) {
  const auto colors = [](const std::string& name) {
    return "<dict><key>CustomColor</key><array><array><string>" + name +
           "</string><string>#FF0000FF</string></array></array></dict>";
  };
  const std::string pair =
      "<dict><key>CustomColor</key><array>"
      "<array><string>UIKBColorBackgroundAlertGradientStart</string><string>#FF0000FF</string>"
      "</array><array><string>UIKBColorBackgroundAlertGradientEnd</string>"
      "<string>#FF0000FF</string></array></array></dict>";
  const std::string gradient =
      "<dict><key>CustomLinearGradient</key><array><array>"
      "<string>UIKBGradientKeySpace</string><string>UIKBColorKeyLetter</string>"
      "</array></array></dict>";
  struct Case {
    std::string theme;
    std::string options;
    int status;
  };
  const Case cases[] = {
      {"<dict/>", "--key q", 1},
      {colors("Mine"), "--key q", 1},
      {colors("UIKBColorTextLetter"), "--key q", 0},
      {colors("UIKBColorTextLetter"), "--key q --press q", 1},
      {colors("UIKBColorTextLetter"), "--key space", 1},
      {colors("UIKBColorKeyReturn"), "--key return", 0},
      {colors("UIKBColorBackgroundStandard"), "--key q", 0},
      {gradient, "--key space", 0},
      {gradient, "--key q", 1},
      {pair, "--key q --style alert", 0},
      {pair, "--key q", 1},
      {"<dict><key>Styles</key>", "--key q", 2},
  };
  for (const Case& c : cases) {
    write("t.plist", c.theme);
    const Outcome outcome = run("t.plist " + c.options);
    EXPECT_EQ(outcome.status, c.status) << c.theme << c.options << outcome.output;
  }
}

TEST_F(ExplainPlanted, OfAnInstalledThemeHasLinesOfItsFile) {
  const std::string file = "/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist";
  write("device" + file, kPlanted);
  const Outcome outcome = run("--device-root device --key return");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.output.find("RULES of iPhone-Standard, " + file), std::string::npos);
  json installed = told("--device-root device --key return");
  EXPECT_EQ(installed, told("planted.plist --key return"));
}

TEST_F(ExplainPlanted, RefusesWhatItCannotAnswer) {
  struct Case {
    std::string arguments;
    std::string says;
  };
  const Case cases[] = {
      {"planted.plist", "a --key or a --rule"},
      {"planted.plist --key q --rule 1 --style iPhone-Standard", "a --key or a --rule"},
      {"planted.plist --key nothing", "--key nothing: no such key; this keyplane has"},
      {"planted.plist --key q --press nothing", "--press nothing: no such key"},
      {"planted.plist --key q --dictation", "the dictation panel has no keys"},
      {"planted.plist --key q --style iPad-Split", "goes with --rule"},
      {"planted.plist --key q -o x.png", "-o draws the keys that a --rule hits"},
      {"planted.plist --rule 1", "--rule needs the --style"},
      {"planted.plist --rule -1 --style iPhone-Standard", "--rule: Value -1 not in range 0 to"},
      {"planted.plist --rule 18446744073709551616 --style iPhone-Standard", "not in range 0 to"},
      {"planted.plist --rule 1 --style iPhone-Standard --dictation-key no", "go with --key"},
      {"planted.plist --rule 1 --style iPhone-Standard --international-key yes", "go with --key"},
      {"planted.plist --rule 1 --style alert", "--rule needs the --style"},
      {"planted.plist --rule 7 --style iPhone-Standard", "7 rules for iPhone-Standard"},
      {"planted.plist --rule 0 --style iPad-Alert", "0 rules for iPad-Alert"},
      {"planted.plist --rule -1 --style iPhone-Standard", "--rule"},
      {"planted.plist --rule 1 --style iPhone-Standard --press q", "--rule tells of all states"},
      {"planted.plist --rule 0 --style iPhone-Standard -o missing/x.png", "missing/x.png"},
      {"planted.plist --rule 0 --style iWatch", "--style"},
      {"none.plist --key q", "none.plist: No such file"},
      {"planted.plist --key q --library none.so", "none.so"},
  };
  for (const Case& c : cases) {
    const Outcome outcome = prismal("explain --quiet " + c.arguments, "2>&1 >/dev/null");
    EXPECT_EQ(outcome.status, 2) << c.arguments;
    EXPECT_NE(outcome.output.find(c.says), std::string::npos) << c.arguments << outcome.output;
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 1) << outcome.output;
  }
}

}  // namespace
