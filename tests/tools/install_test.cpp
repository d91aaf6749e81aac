// Themes come to the device, are merged there and go; and the library draws what was asked for.

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "device_command.h"
#include "host/images/encode.h"

namespace {

namespace fs = std::filesystem;

std::string png(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  return host::images::encodePng(host::images::solid(2, 2, red, green, blue, 255));
}

std::string images(const std::string& entries) {
  return "<key>BackgroundImages</key><dict>" + entries + "</dict>";
}
std::string image(const std::string& key, const std::string& path) {
  return "<key>" + key + "</key><string>" + path + "</string>";
}

class Install : public DeviceCommand {
 protected:
  void theme(const std::string& name, const std::string& list) const {
    write(name + ".theme/theme.plist", list);
  }
  std::vector<std::string> installed() const {
    const auto list = nlohmann::json::parse(prismal("list --json", "2>/dev/null").output);
    std::vector<std::string> names;
    for (const auto& each : list["themes"]) names.push_back(each["name"]);
    return names;
  }
  using Names = std::vector<std::string>;
};

constexpr const char* kErrorsAlone = "2>&1 >/dev/null";

constexpr unsigned kRed = 0xffff0000;
constexpr unsigned kGreen = 0xff00ff00;
constexpr unsigned kBlue = 0xff0000ff;

// Points inside the q key and between the keys, at two pixels a point.
unsigned keyOf(const host::images::Bitmap& keyboard) {
  return keyboard.at(10, 60);
}
unsigned behindOf(const host::images::Bitmap& keyboard) {
  return keyboard.at(0, 0);
}

TEST_F(Install, TheLastOneInstalledWinsAndGoesAgain) {
  theme("Red", colored("#FF0000FF", images(image("Portrait", "p.png"))));
  write("Red.theme/p.png", png(255, 0, 0));
  theme("Green", colored("#00FF00FF"));
  theme("Blue", colored("#0000FFFF", images(image("Portrait", "below/p.png"))));
  write("Blue.theme/below/p.png", png(0, 0, 255));

  struct Step {
    std::string command;
    Names topmostFirst;
    unsigned key;
    unsigned behind;
  };
  const Step steps[] = {
      {"install Red.theme", {"Red"}, kRed, kRed},
      {"install Green.theme Blue.theme", {"Blue", "Green", "Red"}, kBlue, kBlue},
      {"install ./Green.theme/", {"Green", "Blue", "Red"}, kGreen, kBlue},
      {"uninstall Blue", {"Green", "Red"}, kGreen, kRed},
      {"install Green.theme Red.theme", {"Red", "Green"}, kRed, kRed},
      {"uninstall Green Red", {}, 0xfffdfdfe, 0xffd1d5db},
      {"install Blue.theme", {"Blue"}, kBlue, kBlue},
      {"uninstall --all", {}, 0xfffdfdfe, 0xffd1d5db},
  };
  for (const Step& step : steps) {
    SCOPED_TRACE(step.command);
    const Outcome outcome = prismal(step.command, kErrorsAlone);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(installed(), step.topmostFirst);
    const auto keyboard = drawn();
    EXPECT_EQ(keyOf(keyboard), step.key);
    EXPECT_EQ(behindOf(keyboard), step.behind);
  }
  EXPECT_EQ(files(),
            (Names{"/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist",
                   "/var/mobile/Library/Prismal/installed.plist"}));
}

TEST_F(Install, TheLibraryDrawsTheMergeLikeOneThemeOfAllTheirEntries) {
  const auto styles = [](const std::string& style, const std::string& color) {
    return "<key>Styles</key><dict><key>" + style +
           "</key><array><array><string>*</string><dict><key>TextColor</key><string>" + color +
           "</string></dict></array></array></dict>";
  };
  const auto gradient = [](const std::string& color) {
    return "<key>CustomLinearGradient</key><array><array><string>UIKBGradientKeyLetter</string>"
           "<string>" +
           color + "</string></array></array>";
  };
  const std::string one = "UIKBColorTextReturnDisabled";
  const std::string two = "UIKBColorKeyShiftOn";
  struct Case {
    const char* what;
    std::string lower, upper, both;
    std::string options;
  };
  const Case cases[] = {
      {"gradients", gradient(one), gradient(two), gradient(two), ""},
      {"rules", styles("iPhone-Standard", one), styles("iPhone-Standard", two),
       styles("iPhone-Standard", two), ""},
      {"a tablet dressed by a phone's rules, on top", styles("iPad-Standard", one),
       styles("iPhone-Standard", two), styles("iPad-Standard", two), "--device tablet"},
      {"a section of one that is malformed", gradient(one),
       "<key>CustomLinearGradient</key><true/>", gradient(one), ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    theme("Lower", "<dict>" + c.lower + "</dict>");
    theme("Upper", "<dict>" + c.upper + "</dict>");
    theme("Both", "<dict>" + c.both + "</dict>");
    ASSERT_EQ(prismal("install Lower.theme Upper.theme").status, 0);
    const auto merged = drawn(c.options);
    EXPECT_EQ(merged.pixels, drawn("Both.theme " + c.options).pixels);
    EXPECT_NE(merged.pixels, drawn("--system " + c.options).pixels);
  }
}

TEST_F(Install, TellsWhatItLeavesOutAndGoesOn) {
  theme("A", colored("#FF0000FF", images(image("Portrait", "none.png") + image("X", "../p.png"))));
  theme("B", "<dict><key>CustomColor</key><string>none</string></dict>");
  const Outcome outcome = prismal("install A.theme B.theme", kErrorsAlone);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output,
            "A: BackgroundImages: Portrait: none.png: No such file or directory\n"
            "A: BackgroundImages: X: ../p.png: leads out of the folder\n"
            "B: CustomColor must be an array; it is left out\n");
  EXPECT_EQ(keyOf(drawn()), kRed);

  theme("other/A", colored("#00FF00FF"));
  const Outcome twins = prismal("install A.theme other/A.theme");
  EXPECT_EQ(twins.status, 0);
  EXPECT_NE(twins.output.find("A: the name of two themes; other/A.theme replaces A.theme\n"),
            std::string::npos);
  EXPECT_EQ(keyOf(drawn()), kGreen);
  EXPECT_EQ(installed(), (Names{"A", "B"}));
}

TEST_F(Install, AReplacedThemeLeavesNoOldPictureBehind) {
  theme("A",
        "<dict>" + images(image("Portrait", "p.png") + image("Landscape", "q.png")) + "</dict>");
  for (const char* name : {"p.png", "p@2x.png", "q.png"})
    write("A.theme/" + std::string(name), png(255, 0, 0));
  ASSERT_EQ(prismal("install A.theme").status, 0);
  EXPECT_EQ(behindOf(drawn()), kRed);
  fs::remove(folder() / "A.theme/p@2x.png");
  fs::remove(folder() / "A.theme/q.png");
  write("A.theme/p.png", png(0, 255, 0));
  ASSERT_EQ(prismal("install A.theme").status, 0);
  EXPECT_EQ(behindOf(drawn()), kGreen);
  const std::string own = "/var/mobile/Library/Prismal/";
  EXPECT_EQ(files(), (Names{kMergedTheme, own + "Themes/A/p.png", own + "Themes/A/theme.plist",
                            own + "installed.plist"}));
}

TEST_F(Install, RefusesInOneLineAndChangesNothing) {
  theme("A", colored("#FF0000FF"));
  theme("Broken", "<dict><key>a</key></dict>");
  theme("..", colored("#00FF00FF"));
  fs::create_directory(folder() / "other");
  ASSERT_EQ(prismal("install A.theme").status, 0);
  const std::string before = readDevice(kMergedTheme);
  struct Case {
    std::string command;
    std::string says;
  };
  const Case cases[] = {
      {"install", "THEME is required"},
      {"install A.theme None.theme", "prismal install: None.theme: No such file or directory"},
      {"install other",
       "prismal install: other: a theme folder has a theme.plist, this one has none"},
      {"install A.theme Broken.theme", "Broken.theme/theme.plist: line 1, column 7"},
      {"install ...theme", "prismal install: ..: no theme can have this name"},
      {"install A.theme --device-root ''", "--device-root: its value is empty"},
      {"install A.theme --device-root /", "/: this machine's own root can't be a device"},
      {"install A.theme --device-root A.theme/theme.plist", "no device at A.theme/theme.plist"},
      {"uninstall B", "prismal uninstall: B: no theme of that name is installed"},
      {"uninstall A B", "prismal uninstall: B: no theme of that name is installed"},
      {"uninstall a", "a: no theme of that name is installed; did you mean A?"},
      {"uninstall A.plist", "prismal uninstall: A.plist: no theme of that name is installed"},
      {"uninstall A/theme.plist", "A/theme.plist: no theme of that name is installed"},
      {"uninstall", "names of themes, or --all"},
      {"uninstall A --all", "names of themes, or --all"},
      {"uninstall A --device-root none", "no device at none: No such file"},
      {"list --device-root none", "no device at none: No such file"},
      {"notify theme", "WHAT"},
      {"notify themes --device-root none", "no device at none: No such file"},
  };
  for (const Case& c : cases) {
    const Outcome outcome = prismal(c.command);
    EXPECT_EQ(outcome.status, 2) << c.command;
    EXPECT_NE(outcome.output.find(c.says), std::string::npos)
        << c.command << ": " << outcome.output;
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 1) << outcome.output;
  }
  EXPECT_EQ(readDevice(kMergedTheme), before);
  EXPECT_EQ(installed(), (Names{"A"}));
  EXPECT_FALSE(fs::exists(folder() / "none"));
}

TEST_F(Install, SaysWhatItHasDone) {
  theme("A", colored("#FF0000FF"));
  theme("B", colored("#00FF00FF"));
  write("p.png", png(255, 0, 0));
  struct Case {
    std::string command;
    std::string says;
  };
  const Case cases[] = {
      {"install A.theme",
       "Installed A, the topmost. Look at the device: prismal render -o picture.png\n"},
      {"install B.theme A.theme --device-root .",
       "Installed B, A; A is the topmost. Look at the device: prismal render --device-root . -o "
       "picture.png\n"},
      {"uninstall A", "Uninstalled A.\n"},
      {"uninstall --all", "No theme is installed any more.\n"},
      {"settings usePrismal off", "usePrismal is off.\n"},
      {"settings usePrismal on", "usePrismal is on.\n"},
      {"settings background iPad-Split Portrait p.png",
       "background iPad-Split Portrait is p.png.\n"},
      {"settings background iPad-Split Portrait --remove",
       "background iPad-Split Portrait is the theme's again.\n"},
  };
  for (const Case& c : cases) EXPECT_EQ(prismal(c.command).output, c.says) << c.command;
}

TEST_F(Install, ADeviceThatNobodyHasMadeIsAnEmptyOne) {
  struct Case {
    std::string command;
    int status;
    std::string says;
  };
  const Case cases[] = {
      {"list", 0, "No theme is installed; `prismal install THEME` does that.\nusePrismal is on.\n"},
      {"list --json", 0, "{\n \"usePrismal\": true,\n \"themes\": []\n}\n"},
      {"settings", 0,
       "SETTING     VALUE\nusePrismal  on\n(no settings file: every setting has its default)\n"},
      {"uninstall A", 2, "prismal uninstall: A: no theme of that name is installed\n"},
      {"uninstall --all", 0, "No theme is installed any more.\n"},
      {"notify themes", 0, ""},
      {"render", 2,
       "prismal render: no THEME is given, and none is installed; `prismal install THEME` does "
       "that, `prismal render --system` draws the plain keyboard\n"},
  };
  for (const Case& c : cases) {
    const Outcome outcome = prismal(c.command);
    EXPECT_EQ(outcome.status, c.status) << c.command;
    EXPECT_EQ(outcome.output, c.says) << c.command;
  }
  EXPECT_FALSE(fs::exists(folder() / kDevice));
}

TEST_F(Install, AThemeThatIsDamagedOnTheDeviceCostsTheOthersNothing) {
  theme("A", colored("#FF0000FF"));
  theme("B", colored("#00FF00FF"));
  ASSERT_EQ(prismal("install A.theme B.theme").status, 0);
  write(std::string(kDevice) + "/var/mobile/Library/Prismal/Themes/B/theme.plist", "<dict>");
  theme("C", "<dict/>");
  const Outcome outcome = prismal("install C.theme");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(
      outcome.output.find("B is left out: /var/mobile/Library/Prismal/Themes/B/theme.plist: line"),
      0U)
      << outcome.output;
  EXPECT_EQ(keyOf(drawn()), kRed);
  EXPECT_EQ(prismal("uninstall B", kErrorsAlone).output, "");
}

TEST_F(Install, AThemeGoesByTheFolderThatItCameFrom) {
  theme("A", "<dict/>");
  theme("below/B", "<dict/>");
  theme("C.theme", "<dict/>");
  ASSERT_EQ(prismal("install A.theme below/B.theme C.theme.theme").status, 0);
  ASSERT_EQ(installed(), (Names{"C.theme", "B", "A"}));
  EXPECT_EQ(prismal("uninstall A.theme below/B.theme/").output, "Uninstalled A, B.\n");
  // A name goes before the folder that it looks like.
  EXPECT_EQ(prismal("uninstall C.theme").output, "Uninstalled C.theme.\n");
  EXPECT_EQ(installed(), Names());
}

TEST_F(Install, WhatNoListNamesIsClearedAndNothingElse) {
  const std::string own = "/var/mobile/Library/Prismal/";
  const std::string settings =
      "<dict><key>backgroundImages</key><dict><key>iPad-Split</key><dict><key>Portrait</key>"
      "<string>" +
      own + "Pictures//./mine/p.png</string></dict></dict></dict>";
  const std::string merged =
      "<dict>" + images(image("Portrait", own + "Themes/byHand/p.png")) + "</dict>";
  struct Case {
    const char* what;
    const char* path;
    std::string list;
    Names stay;  // of Themes/byHand, Themes/other, Pictures/mine, Pictures/other
  };
  const Case cases[] = {
      {"a theme put there by hand", kMergedTheme, merged, {"Themes/byHand"}},
      {"a merged file that can't be read",
       kMergedTheme,
       "<dict>",
       {"Themes/byHand", "Themes/other"}},
      {"a picture of the user's", kUserSettings, settings, {"Pictures/mine"}},
      {"a picture of the default settings", kDefaultSettings, settings, {"Pictures/mine"}},
      {"settings that can't be read",
       kDefaultSettings,
       "<dict>",
       {"Pictures/mine", "Pictures/other"}},
      {"a list of themes that can't be read",
       "/var/mobile/Library/Prismal/installed.plist",
       "<dict>",
       {"Themes/byHand", "Themes/other"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    fs::remove_all(folder() / kDevice);
    const Names all = {"Pictures/mine", "Pictures/other", "Themes/byHand", "Themes/other"};
    for (const std::string& each : all) write((kDevice + own).append(each).append("/p.png"), "x");
    write(kDevice + std::string(c.path), c.list);
    prismal("uninstall None");
    Names stayed;
    for (const std::string& each : all) {
      if (fs::exists(onDevice(own + each))) stayed.push_back(each);
    }
    EXPECT_EQ(stayed, c.stay);
  }

  // A folder that is another's.
  fs::remove_all(folder() / kDevice);
  write(kDevice + std::string("/var/mobile/Media/photo.jpg"), "x");
  fs::create_directories(onDevice(own));
  for (const char* name : {"Themes", "Pictures"}) {
    fs::create_directory_symlink("../../Media", onDevice(own + name));
  }
  prismal("uninstall None");
  EXPECT_TRUE(fs::exists(onDevice("/var/mobile/Media/photo.jpg")));
}

TEST_F(Install, TheListTellsWhatEachThemeHolds) {
  ASSERT_EQ(prismal("install '" EXAMPLES "/Linen.theme' '" EXAMPLES "/Dusk.theme'").status, 0);
  ASSERT_EQ(prismal("settings usePrismal off").status, 0);
  EXPECT_EQ(prismal("list").output,
            "THEME  COLOURS  GRADIENTS  RULES  PICTURES\n"
            "Dusk   22       4          10     4\n"
            "Linen  30       0          0      0\n"
            "Where themes differ, the upper one wins.\n"
            "usePrismal is off.\n");
  const auto list = nlohmann::json::parse(prismal("list --json").output);
  EXPECT_EQ(list["usePrismal"], false);
  EXPECT_EQ(list["themes"][0], nlohmann::json::parse(R"({"name": "Dusk", "colors": 22,
      "gradients": 4, "rules": 10, "pictures": 4})"));
}

}  // namespace
