// The theme that authors begin with, and the tables of the format.

#include <gtest/gtest.h>
#include <regex>
#include <string>

#include "command.h"

namespace {

namespace fs = std::filesystem;

class New : public Command {};

TEST_F(New, MakesAThemeThatDrawsWithoutComplaint) {
  const Outcome made = prismal("new Evening");
  ASSERT_EQ(made.status, 0) << made.output;
  EXPECT_EQ(made.output,
            "Made Evening.theme. Look at it: prismal render Evening.theme -o picture.png\n");
  for (const std::string name : {"background", "background-wide"}) {
    const auto plain = picture("Evening.theme/" + name + ".png");
    const auto sharp = picture("Evening.theme/" + name + "@2x.png");
    EXPECT_EQ(sharp.width, 2 * plain.width);
    EXPECT_EQ(sharp.height, 2 * plain.height);
  }
  ASSERT_EQ(prismal("render --system -o system.png").status, 0);
  for (const std::string view :
       {"", " --orientation landscape", " --keyplane numbers", " --style alert", " --device tablet",
        " --shift on", " --press g", " --dictation"}) {
    const Outcome drawn = prismal("render Evening.theme -o evening.png" + view);
    EXPECT_EQ(drawn.status, 0);
    // Nothing but what the library logs for every good theme.
    static const std::regex usual(
        "(QZ Bundle: |PM: (Clear Keyboard Cache|InitColorCache): |PM: Enabled\\(1\\)).*\n");
    const std::string rest = std::regex_replace(drawn.output, usual, "");
    EXPECT_EQ(rest, "") << view;
  }
  ASSERT_EQ(prismal("render Evening.theme -o evening.png").status, 0);
  const auto atRest = picture("evening.png").pixels;
  EXPECT_NE(atRest, picture("system.png").pixels);
  for (const std::string state : {" --press return", " --disable return", " --shift locked"}) {
    ASSERT_EQ(prismal("render Evening.theme -o evening.png" + state).status, 0);
    EXPECT_NE(picture("evening.png").pixels, atRest) << state;
  }
}

TEST_F(New, CheckFindsNothingInIt) {
  ASSERT_EQ(prismal("new Evening").status, 0);
  const Outcome checked = prismal("check Evening.theme", "2>/dev/null");
  EXPECT_EQ(checked.output, "");
  EXPECT_EQ(checked.status, 0);
}

TEST_F(New, TakesTheNameWithOrWithoutItsExtension) {
  fs::create_directory(folder() / "themes");
  struct Case {
    std::string name;
    std::string file;
  };
  const Case cases[] = {{"A", "A.theme"},        {"B.theme", "B.theme"},
                        {"C.theme/", "C.theme"}, {"themes/D", "themes/D.theme"},
                        {"'E F'", "E F.theme"},  {"G.plist", "G.plist.theme"},
                        {"./H", "H.theme"}};
  for (const auto& [name, file] : cases) {
    EXPECT_EQ(prismal("new " + name).status, 0) << name;
    EXPECT_TRUE(fs::exists(folder() / file / "theme.plist")) << name;
  }
}

TEST_F(New, TellsACommandThatAShellTakesAsItIs) {
  for (const std::string name : {"-x", "\"it's\"", "'a $b'"}) {
    const Outcome made = prismal("new -- " + name);
    const auto command = made.output.find("prismal render");
    ASSERT_NE(command, std::string::npos) << made.output;
    EXPECT_EQ(script(made.output.substr(command)).status, 0) << made.output;
    EXPECT_TRUE(fs::remove(folder() / "picture.png")) << made.output;
  }
}

TEST_F(New, OverwritesNothing) {
  write("A.theme/theme.plist", "mine");
  write("B.theme", "mine");
  struct Case {
    std::string name;
    std::string message;
  };
  const Case cases[] = {{"A", "A.theme: is there already"},
                        {"B", "B.theme: "},
                        {"none/C", "none/C.theme: No such file"},
                        {"..", "..: no name for a theme"},
                        {".theme/..", ".theme/..: no name for a theme"},
                        // What no device could have installed.
                        {"...theme", "...theme: no name for a theme"},
                        {"\"$(printf 'a\\nb')\"", "a\\nb: no name for a theme"},
                        {"\"$(printf 'a\\377')\"", "a\xEF\xBF\xBD: no name for a theme"}};
  for (const auto& [name, message] : cases) {
    const Outcome outcome = prismal("new " + name);
    EXPECT_EQ(outcome.status, 2) << name;
    EXPECT_EQ(outcome.output.substr(0, 13 + message.size()), "prismal new: " + message);
  }
  EXPECT_EQ(read("A.theme/theme.plist"), "mine");
  EXPECT_FALSE(fs::exists(folder() / "A.theme/background.png"));
  EXPECT_EQ(read("B.theme"), "mine");
}

TEST_F(New, FormatIsToldInTables) {
  const Outcome told = prismal("format");
  EXPECT_EQ(told.status, 0);
  for (const std::string text :
       {"SECTION ", "\nBackgroundGradient ", "\nTransparentForeground  number or boolean  ",
        "\n*  ", "\niPad-Split  ", "  Portrait;iPhone-Standard;1;258  ", "\nusePrismal  "}) {
    EXPECT_NE(told.output.find(text), std::string::npos) << text;
  }
  EXPECT_EQ(nlohmann::json::parse(prismal("format --schema").output)["type"], "object");
}

}  // namespace
