// The pictures of several keyboards: sheets, folders, comparisons; and the settings and the cache
// behind a picture.

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "command.h"
#include "host/images/encode.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kTheme = R"(<dict>
  <key>CustomColor</key><array>
    <array><string>UIKBColorKeyLetter</string><string>#FF0000FF</string></array>
  </array>
</dict>)";

class RenderViews : public Command {
 protected:
  RenderViews() { write("red.plist", kTheme); }
  Outcome run(const std::string& arguments) const { return prismal("render --quiet " + arguments); }
};

TEST_F(RenderViews, EveryViewIsAFileAndEachIsWhatIsDrawnAlone) {
  ASSERT_EQ(run("red.plist --all all --scale 1").status, 0);
  std::size_t files = 0;
  for (const auto& entry : fs::directory_iterator(folder() / "all")) {
    EXPECT_EQ(entry.path().extension(), ".png");
    ++files;
  }
  EXPECT_EQ(files, 8U * 2 * 5);
  ASSERT_EQ(
      run("red.plist --device tablet --orientation landscape --style alert --keyplane numbers "
          "--scale 1 -o one.png")
          .status,
      0);
  EXPECT_EQ(read("one.png"), read("all/tablet-landscape-alert-numbers.png"));
  ASSERT_EQ(run("red.plist --device phone-4 --dictation --scale 1 -o one.png").status, 0);
  EXPECT_EQ(read("one.png"), read("all/phone-4-portrait-standard-dictation.png"));
}

TEST_F(RenderViews, ASheetHoldsWhatItIsNarrowedTo) {
  ASSERT_EQ(run("red.plist --sheet --device phone-3.5 --style standard -o sheet.png").status, 0);
  ASSERT_EQ(run("red.plist --scale 1 -o one.png").status, 0);
  const auto sheet = picture("sheet.png");
  const auto one = picture("one.png");
  // The first of its views lies at the top left, a caption below it.
  for (const int y : {0, 100, 215}) {
    EXPECT_TRUE(std::equal(one.row(y), one.row(y) + one.width, sheet.row(16 + y) + 16)) << y;
  }
  // A hairline tells it from the table, one pixel wide.
  const auto table = sheet.at(0, 0);
  const auto line = sheet.at(15, 15);
  EXPECT_NE(line, table);
  for (const auto& [x, y] :
       {std::pair(15, 100), {100, 15}, {16 + one.width, 100}, {100, 16 + one.height}}) {
    EXPECT_EQ(sheet.at(x, y), line) << x << " " << y;
  }
  for (const auto& [x, y] : {std::pair(14, 100), {100, 14}, {17 + one.width, 100}}) {
    EXPECT_EQ(sheet.at(x, y), table) << x << " " << y;
  }
  EXPECT_GT(sheet.width, 5 * one.width);
  EXPECT_LT(sheet.height, 3 * one.height);
}

TEST_F(RenderViews, SideBySideAndWhatDiffers) {
  ASSERT_EQ(run("red.plist -o one.png").status, 0);
  ASSERT_EQ(run("--system -o system.png").status, 0);
  ASSERT_EQ(run("red.plist --beside-system -o beside.png").status, 0);
  const auto one = picture("one.png");
  const auto system = picture("system.png");
  const auto beside = picture("beside.png");
  EXPECT_TRUE(std::equal(one.row(99), one.row(99) + one.width, beside.row(32 + 99) + 32));
  EXPECT_TRUE(std::equal(system.row(99), system.row(99) + system.width,
                         beside.row(32 + 99) + 64 + one.width));

  write("blue.plist",
        std::string(kTheme).replace(std::string(kTheme).find("#FF0000"), 7, "#0000FF"));
  const Outcome differs = prismal("render red.plist --diff blue.plist -o diff.png");
  EXPECT_EQ(differs.status, 1);
  EXPECT_NE(differs.output.find("pixels differ"), std::string::npos) << differs.output;
  EXPECT_EQ(run("red.plist --diff red.plist -o same.png").status, 0);
  EXPECT_EQ(run("red.plist --diff blue.plist --keyplane numbers --press 1 -o diff.png").status, 1);
  EXPECT_EQ(picture("diff.png").width, 3 * one.width + 4 * 32);
  const Outcome missing = run("red.plist --diff missing.plist -o never.png");
  EXPECT_EQ(missing.status, 2);
  EXPECT_NE(missing.output.find("missing.plist: No such file"), std::string::npos);
  EXPECT_FALSE(fs::exists(folder() / "never.png"));
}

TEST_F(RenderViews, TellsOfPicturesThatAreNone) {
  write("T.theme/theme.plist",
        "<dict><key>BackgroundImages</key><dict><key>Portrait</key><string>p.png</string></dict>"
        "</dict>");
  write("T.theme/p.png", "not a picture");
  const std::string line = "/var/mobile/Library/Prismal/Themes/T/p.png: Neither PNG nor JPEG\n";
  EXPECT_NE(prismal("render T.theme -o x.png").output.find("\n" + line), std::string::npos);
  const Outcome compared = prismal("render red.plist --diff T.theme -o x.png");
  EXPECT_NE(compared.output.find("\nT: " + line), std::string::npos) << compared.output;
  EXPECT_NE(compared.output.find("red: PM: Enabled(1)\n"), std::string::npos) << compared.output;
}

TEST_F(RenderViews, SettingsOfTheUser) {
  write("mine.png", host::images::encodePng(host::images::solid(4, 4, 0, 0xff, 0, 0xff)));
  const auto settings = [](const std::string& more) {
    return "<dict><key>backgroundImages</key><dict><key>iPhone-Standard</key><dict><key>Portrait"
           "</key><string>mine.png</string></dict></dict>" +
           more + "</dict>";
  };
  write("on.plist", settings(""));
  write("off.plist", settings("<key>usePrismal</key><false/>"));
  ASSERT_EQ(run("red.plist --settings on.plist -o on.png").status, 0);
  ASSERT_EQ(run("red.plist --settings off.plist -o off.png").status, 0);
  EXPECT_EQ(picture("on.png").at(0, 0), 0xff00ff00);
  EXPECT_EQ(picture("off.png").at(0, 0), 0xff00ff00);
  // Inside the q key.
  EXPECT_EQ(picture("on.png").at(10, 60), 0xffff0000);
  EXPECT_EQ(picture("off.png").at(10, 60), 0xfffdfdfe);
}

TEST_F(RenderViews, TheSystemsKeysComeFromTheCacheOfADevice) {
  fs::create_directories(folder() / "device");
  const std::string system = "--system --device-root device --dictation-key yes ";
  const fs::path caches = folder() / "device/var/mobile/Library/Caches/com.apple.keyboards";
  ASSERT_EQ(run(system + "-o first.png").status, 0);
  ASSERT_EQ(std::distance(fs::directory_iterator(caches), {}), 1);
  ASSERT_EQ(run(system + "-o second.png").status, 0);
  EXPECT_EQ(read("first.png"), read("second.png"));
  ASSERT_EQ(run(system + "--style alert --press a -o other.png").status, 0);
  EXPECT_EQ(std::distance(fs::directory_iterator(caches), {}), 2);
  // The library empties it and keeps it switched off.
  ASSERT_EQ(run("--device-root device -o themed.png").status, 0);
  EXPECT_TRUE(!fs::exists(caches) || fs::is_empty(caches));
}

TEST_F(RenderViews, TheSamePictureEachTime) {
  const std::string options = "red.plist --device tablet --press a --dictation-key yes -o ";
  ASSERT_EQ(run(options + "first.png --keys first.json").status, 0);
  ASSERT_EQ(run(options + "second.png --keys second.json").status, 0);
  EXPECT_EQ(read("first.png"), read("second.png"));
  EXPECT_EQ(read("first.json"), read("second.json"));
  EXPECT_EQ(prismal("render --quiet " + options + "- | cmp - first.png").status, 0);
}

TEST_F(RenderViews, AKeyIsFoundByItsLabelInEitherCase) {
  const std::string capitals = "red.plist --shift on -o ";
  ASSERT_EQ(run(capitals + "exact.png --press G").status, 0);
  ASSERT_EQ(run(capitals + "other.png --press g").status, 0);
  ASSERT_EQ(run(capitals + "none.png").status, 0);
  EXPECT_EQ(read("exact.png"), read("other.png"));
  EXPECT_NE(read("exact.png"), read("none.png"));
}

TEST_F(RenderViews, RefusesWhatContradictsItself) {
  struct Case {
    std::string arguments;
    std::string says;
  };
  const Case cases[] = {
      {"red.plist --sheet --all x", "not several"},
      {"red.plist --beside-system --diff red.plist", "not several"},
      {"red.plist --sheet --press a", "for one keyboard"},
      {"red.plist --all x --dictation", "for one keyboard"},
      {"red.plist --sheet --keys x.json", "--keys tells of one picture"},
      {"red.plist -o - --keys -", "not both"},
      {"red.plist -o x.png --keys x.png", "not both"},
      {"red.plist --all x -o x.png", "--all names its files"},
      {"red.plist --dictation --press a", "shows no keys"},
      {"red.plist --keyplane numbers --shift on", "--shift is for letters"},
      {"red.plist --diff ''", "--diff: its value is empty"},
      {"''", "THEME: its value is empty"},
      {"red.plist --settings ''", "--settings: its value is empty"},
      {"none.plist --diff red.plist", "none.plist: No such file"},
      {"--beside-system --device-root none", "none: No such file"},
      {"--system --beside-system", "leave --system out"},
      {"--device-root . --settings red.plist", "--settings goes with a THEME"},
      {"red.plist --settings none.plist", "none.plist: No such file"},
      {"red.plist --all red.plist", "red.plist"},
      {"red.plist --disable nothing", "no such key; this keyplane has q w e r"},
      {"red.plist --press ''", "--press: its value is empty"},
      {"red.plist --device watch", "\"watch\" is none of phone-3.5, phone-4"},
      {"red.plist --scale 1.5", "\"1.5\" is none of 1, 2"},
  };
  for (const Case& c : cases) {
    const Outcome outcome = run(c.arguments);
    EXPECT_EQ(outcome.status, 2) << c.arguments;
    EXPECT_NE(outcome.output.find(c.says), std::string::npos) << c.arguments << outcome.output;
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 1) << outcome.output;
  }
}

}  // namespace
