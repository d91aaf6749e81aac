// What a theme says of some keys is seen on these keys and nowhere else: `render --keys` tells
// where they lie, and the pictures with and without are compared.

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "command.h"
#include "host/images/encode.h"

namespace {

using host::images::Bitmap;
using host::images::Pixel;
using nlohmann::json;

constexpr Pixel kGreen = 0xff00ff00;

class RenderReports : public Command {
 protected:
  /// Draws a theme and returns what `--keys` tells of it; the picture lies in `name`.png.
  json draw(const std::string& theme, const std::string& options, const std::string& name) const {
    write(name + ".plist", "<dict>" + theme + "</dict>");
    const Outcome outcome = prismal("render --quiet " + name + ".plist " + options + " -o " + name +
                                    ".png --keys " + name + ".json");
    EXPECT_EQ(outcome.status, 0) << outcome.output;
    return jsonAt(name + ".json");
  }
};

std::string section(const std::string& name, const std::string& value) {
  return "<key>" + name + "</key>" + value;
}

/// A theme that gives its keys another face where `condition` holds.
std::string green(const std::string& style, const std::string& condition) {
  return section("CustomColor",
                 "<array><array><string>Green</string><string>#00FF00FF</string></array></array>") +
         section("CustomLinearGradient",
                 "<array><array><string>Green</string><string>Green</string></array></array>") +
         section("Styles",
                 "<dict>" +
                     section(style, "<array><array><string>" + condition + "</string><dict>" +
                                        section("BackgroundGradient", "<string>Green</string>") +
                                        "</dict></array></array>") +
                     "</dict>");
}

bool contains(const json& rectangle, int x, int y) {
  return x >= rectangle[0] && y >= rectangle[1] &&
         x < rectangle[0].get<int>() + rectangle[2].get<int>() &&
         y < rectangle[1].get<int>() + rectangle[3].get<int>();
}

/// The names of the keys on which the pictures differ; "" stands for pixels outside every face.
std::set<std::string> keysThatDiffer(const Bitmap& one, const Bitmap& other, const json& keys) {
  std::set<std::string> names;
  for (int y = 0; y < one.height; ++y) {
    for (int x = 0; x < one.width; ++x) {
      if (one.at(x, y) == other.at(x, y)) continue;
      const auto found = std::ranges::find_if(
          keys, [&](const json& key) { return contains(key["pixels"], x, y); });
      names.insert(found == keys.end() ? "" : (*found)["name"].get<std::string>());
    }
  }
  return names;
}

/// Just inside the left edge of a face, halfway down, where no label is.
Pixel faceOf(const Bitmap& picture, const json& key) {
  const json& face = key["pixels"];
  return picture.at(face[0].get<int>() + 2, face[1].get<int>() + face[3].get<int>() / 2);
}

TEST_F(RenderReports, RulesShowOnTheKeysThatTheyMean) {
  struct Case {
    std::string style;
    std::string condition;
    std::string options;
    std::function<bool(const json&)> means;
  };
  const auto named = [](const std::string& name) {
    return [name](const json& key) { return key["name"] == name; };
  };
  const Case cases[] = {
      {"iPhone-Standard", "KeyName=Latin-Small-Letter-G", "", named("Latin-Small-Letter-G")},
      {"iPhone-Standard", "Row=Row2", "--device phone-4 --orientation landscape",
       [](const json& key) { return key["displayRowHint"] == 2; }},
      {"iPhone-Standard", "DisplayType=Shift,Return", "--keyplane numbers-alternate",
       [](const json& key) {
         return key["displayType"] == "Shift" || key["displayType"] == "Return";
       }},
      {"iPhone-Standard", "DisplayTypeHint=1", "--keyplane numbers --scale 1",
       [](const json& key) { return key["displayTypeHint"] == 1; }},
      {"iPhone-Standard", "ControlState=1", "--press a --press return",
       [](const json& key) { return key["state"] == 4; }},
      {"iPhone-Standard", "ControlState=2", "--disable Delete-Key", named("Delete-Key")},
      {"iPhone-Standard", "ControlState=6", "--shift on", named("Shift-Key")},
      {"iPhone-Standard", "ControlState=7", "--shift locked --press Shift-Key", named("Shift-Key")},
      {"iPhone-Alert", "KeyName=Space-Key", "--style alert", named("Space-Key")},
      {"iPad-Standard", "DisplayType=Shift", "--device tablet",
       [](const json& key) { return key["displayType"] == "Shift"; }},
      {"iPad-Standard", "KeyName=Latin-Capital-Letter-Y",
       "--device tablet-split --keyplane capital-letters", named("Latin-Capital-Letter-Y")},
      {"iPad-Alert", "Row=Row4", "--device tablet --style alert --orientation landscape --scale 1",
       [](const json& key) { return key["displayRowHint"] == 4; }},
  };
  for (const Case& c : cases) {
    const json report = draw(green(c.style, c.condition), c.options, "with");
    draw(green(c.style, "Row=Row9"), c.options, "without");
    std::set<std::string> meant;
    for (const json& key : report["keys"]) {
      if (c.means(key)) meant.insert(key["name"]);
    }
    EXPECT_FALSE(meant.empty()) << c.condition;
    const Bitmap with = picture("with.png");
    EXPECT_EQ(keysThatDiffer(with, picture("without.png"), report["keys"]), meant)
        << c.condition << " " << c.options;
    for (const json& key : report["keys"]) {
      EXPECT_EQ(faceOf(with, key) == kGreen, meant.contains(key["name"])) << key["name"];
      const bool isGreen = key["traits"]["backgroundGradient"] == json({{"flatColor", "Green"}});
      EXPECT_EQ(isGreen, meant.contains(key["name"])) << key;
    }
  }
}

TEST_F(RenderReports, EveryNameOfTheSystemIsSeenWhereItIsUsed) {
  struct Case {
    std::string name;
    std::string options;
    std::set<std::string> keys;  ///< "" stands for what lies around the keys
  };
  const Case cases[] = {
      {"UIKBColorKeyReturn", "", {"Return-Key"}},
      {"UIKBColorTextSpace", "", {"Space-Key"}},
      {"UIKBColorKeyLetterPressed", "--press a", {"Latin-Small-Letter-A"}},
      {"UIKBColorTextFunctionDisabled", "--disable 123", {"More-Key"}},
      {"UIKBColorKeyShiftOn", "--shift on", {"Shift-Key"}},
      {"UIKBColorTextShiftLocked", "--shift locked", {"Shift-Key"}},
      {"UIKBColorAlertKeySpace", "--style alert", {"Space-Key"}},
      {"UIKBColorTextSecondary", "--device tablet", {"Comma", "Full-Stop"}},
  };
  for (const Case& c : cases) {
    const auto define = [](const std::string& name) {
      return section("CustomColor", "<array><array><string>" + name +
                                        "</string><string>#00FF00FF</string></array></array>");
    };
    const json report = draw(define(c.name), c.options, "with");
    draw(define("Nobody"), c.options, "without");
    EXPECT_EQ(keysThatDiffer(picture("with.png"), picture("without.png"), report["keys"]), c.keys)
        << c.name;
  }
}

TEST_F(RenderReports, BackgroundKeysOfEveryForm) {
  write("green.png", host::images::encodePng(host::images::solid(4, 4, 0, 0xff, 0, 0xff)));
  struct Case {
    std::string key;
    std::string options;
    bool shows;
  };
  const Case cases[] = {
      {"Portrait", "", true},
      {"Portrait", "--orientation landscape", false},
      {"Landscape;iPhone-Standard", "--orientation landscape --device phone-4", true},
      {"Landscape;iPhone-Standard", "--orientation landscape --style alert", false},
      {"Portrait;iPhone-Alert;0", "--style alert --keyplane capital-letters", true},
      {"Portrait;iPhone-Standard;2", "--keyplane numbers", true},
      {"Portrait;iPhone-Standard;2", "--keyplane numbers-alternate", false},
      {"Portrait;iPhone-Standard;1;2", "", true},
      {"Portrait;iPhone-Standard;1;258", "", false},
      {"Portrait;iPhone-Standard;1;258", "--dictation-key yes", true},
      {"Portrait;iPhone-Standard;1;770", "--dictation-key yes --international-key no", true},
      {"Portrait;iPhone-Standard;1;514", "--international-key no", true},
      {"Portrait;iPhone-Standard;1;514", "--dictation-key yes", false},
      {"Landscape;iPad-Standard;3",
       "--device tablet --orientation landscape --keyplane "
       "numbers-alternate",
       true},
      {"Portrait;iPad-Split;1", "--device tablet-split", true},
      {"Portrait;iPad-Standard", "--device tablet-split", false},
      {"Portrait;iPhone-Dictation", "--dictation", true},
      {"Landscape;iPhone-Dictation", "--dictation --device tablet --orientation landscape", true},
      {"Portrait;iPhone-Dictation", "", false},
  };
  for (const Case& c : cases) {
    const std::string theme = section(
        "BackgroundImages", "<dict>" + section(c.key, "<string>green.png</string>") + "</dict>");
    const json report = draw(theme, c.options, "x");
    const Bitmap drawn = picture("x.png");
    EXPECT_EQ(drawn.at(0, 0) == kGreen, c.shows) << c.key << " " << c.options;
    EXPECT_EQ(drawn.at(drawn.width - 1, drawn.height - 1) == kGreen, c.shows) << c.key;
    const json path = c.shows ? json("/var/mobile/Library/Prismal/Themes/x/green.png") : json();
    EXPECT_EQ(report["background"], path) << c.key << " " << c.options;
  }
}

/// The number behind a display type's name.
int displayType(const json& name) {
  constexpr std::string_view kTypes[] = {"Letter",  "Shift", "Delete",        "Space",
                                         "Return",  "More",  "International", "Dictation",
                                         "Dismiss", "Undo",  "Redo"};
  return static_cast<int>(std::ranges::find(kTypes, name.get<std::string>()) - kTypes);
}

TEST_F(RenderReports, TraitsAreThoseOfReplay) {
  for (const std::string options :
       {"--press g --disable Delete-Key --dictation-key yes", "--device tablet --shift locked",
        "--device tablet-split --style alert --keyplane numbers"}) {
    const std::string theme = green("iPad-Standard", "DisplayType=Shift;ControlState=7");
    const json report = draw(theme, options, "x");
    json steps = json::array({{{"do", "load"}}});
    for (const json& key : report["keys"]) {
      steps.push_back({{"do", "traits"},
                       {"key",
                        {{"name", key["name"]},
                         {"displayType", displayType(key["displayType"])},
                         {"displayTypeHint", key["displayTypeHint"]},
                         {"displayRowHint", key["displayRowHint"]},
                         {"state", key["state"]}}},
                       {"keyplane", {{"visualStyle", report["visualStyle"]}}},
                       {"expect", {{"result", key["traits"]}}}});
    }
    const json merged = {{"text", "<dict>" + theme + "</dict>"}};
    write(
        "traits.json",
        json(
            {{"files",
              {{"/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist", merged}}},
             {"steps", steps}})
            .dump());
    const Outcome replayed = prismal("replay --quiet traits.json");
    EXPECT_EQ(replayed.status, 0) << options << replayed.output;
  }
}

TEST_F(RenderReports, TellsWhatWasDrawn) {
  struct Case {
    std::string options;
    json says;
  };
  const Case cases[] = {
      {"",
       {{"size", {640, 432}},
        {"scale", 2},
        {"device", "phone-3.5"},
        {"orientation", "portrait"},
        {"style", "standard"},
        {"keyplane", "Portrait_Small-Letters"},
        {"visualStyle", 1},
        {"type", 2}}},
      {"--device phone-4 --orientation landscape --scale 1 --keyplane numbers",
       {{"size", {568, 162}},
        {"scale", 1},
        {"visualStyle", 5},
        {"keyplane", "Landscape_Numbers-And-Punctuation"}}},
      {"--device tablet --style alert", {{"size", {1536, 528}}, {"visualStyle", 9}}},
      {"--device tablet --orientation landscape --keyplane numbers --scale 1",
       {{"size", {1024, 352}}, {"visualStyle", 10}}},
      {"--device tablet-split --orientation landscape --scale 1",
       {{"size", {1024, 352}}, {"visualStyle", 12}, {"style", "standard"}}},
      {"--dictation", {{"size", {640, 432}}, {"keys", json::array()}}},
  };
  for (const Case& c : cases) {
    const json report = draw("", c.options, "x");
    for (const auto& [name, value] : c.says.items()) EXPECT_EQ(report[name], value) << c.options;
    const Bitmap drawn = picture("x.png");
    EXPECT_EQ(report["size"], json({drawn.width, drawn.height}));
    for (const json& key : report["keys"]) {
      const json& face = key["pixels"];
      EXPECT_GE(face[0], 0);
      EXPECT_LE(face[0].get<int>() + face[2].get<int>(), drawn.width) << key;
      EXPECT_LE(face[1].get<int>() + face[3].get<int>(), drawn.height) << key;
    }
  }
}

}  // namespace
