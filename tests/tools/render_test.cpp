// The render command from outside: a theme goes in, pixels and an exit status come out.

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "command.h"
#include "host/images/encode.h"
#include "host/keyboard/boards/layout.h"

namespace {

namespace fs = std::filesystem;
namespace boards = host::boards;
using host::images::Pixel;

constexpr Pixel kRed = 0xffff0000;
constexpr Pixel kGreen = 0xff00ff00;
constexpr Pixel kBlue = 0xff0000ff;
constexpr Pixel kGray = 0xff808080;

class Render : public Command {
 protected:
  Outcome run(const std::string& arguments) const { return prismal("render " + arguments); }

  /// The pixel just inside the left edge of a key's face, halfway down, where no label is.
  static Pixel face(const host::images::Bitmap& bitmap, std::string_view key, int scale = 2) {
    const auto placed =
        boards::place(*boards::findBoard("Phone-3.5-Inch"), boards::Plane::small_letters,
                      boards::Orientation::portrait, {});
    for (const boards::PlacedKey& candidate : placed.keys) {
      if (candidate.key->name != key) continue;
      const auto& frame = candidate.face;
      return bitmap.at(static_cast<int>(frame.x + 1) * scale,
                       static_cast<int>(frame.y + frame.height / 2) * scale);
    }
    ADD_FAILURE() << "no key " << key;
    return 0;
  }
};

constexpr const char* kTheme = R"(<dict>
  <key>CustomColor</key><array>
    <array><string>UIKBColorKeyLetter</string><string>#FF0000FF</string></array>
    <array><string>Mine</string><string>#00FF00FF</string></array>
    <array><string>Broken</string><string>#00FF00</string></array>
  </array>
  <key>CustomLinearGradient</key><array>
    <array><string>Mine</string><string>Mine</string></array>
    <array><string>UIKBGradientKeyFunction</string><string>Blue</string></array>
  </array>
  <key>Styles</key><dict><key>iPhone-Standard</key><array>
    <array><string>KeyName=Latin-Small-Letter-A</string>
      <dict><key>BackgroundGradient</key><string>Mine</string></dict></array>
    <array><string>ControlState=1</string>
      <dict><key>TransparentForeground</key><true/></dict></array>
  </array></dict>
  <key>BackgroundImages</key><dict><key>Portrait</key><string>pictures/p.png</string></dict>
</dict>)";

TEST_F(Render, DrawsWhatTheThemeSays) {
  write("T.theme/theme.plist", kTheme);
  write("T.theme/pictures/p.png",
        host::images::encodePng(host::images::solid(4, 4, 0x80, 0x80, 0x80, 0xff)));
  write("T.theme/pictures/p@2x.png",
        host::images::encodePng(host::images::solid(4, 4, 0, 0, 0xff, 0xff)));
  for (const int scale : {1, 2}) {
    const std::string arguments = "T.theme --press b -o x.png --scale " + std::to_string(scale);
    const Outcome outcome = run(arguments);
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_NE(outcome.output.find("PM: CustomColor String ERROR: (Broken, \"#00FF00\")"),
              std::string::npos);
    const auto bitmap = picture("x.png");
    EXPECT_EQ(bitmap.width, 320 * scale);
    EXPECT_EQ(face(bitmap, "Latin-Small-Letter-Q", scale), kRed);
    EXPECT_EQ(face(bitmap, "Latin-Small-Letter-A", scale), kGreen);
    // A colour that nobody knows leaves the gradient undrawn: the picture behind the key shows, the
    // sharper one where two pixels make a point.
    const Pixel behind = scale == 2 ? kBlue : kGray;
    EXPECT_EQ(face(bitmap, "Shift-Key", scale), behind);
    EXPECT_EQ(face(bitmap, "Latin-Small-Letter-B", scale), behind);
    EXPECT_EQ(bitmap.at(0, 0), behind);
  }
}

TEST_F(Render, DrawsTheSystemOrWhatIsInstalled) {
  ASSERT_EQ(run("--system -o system.png").status, 0);
  write("prismal/device/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist",
        kTheme);
  ASSERT_EQ(run("-o installed.png").status, 0);
  ASSERT_EQ(run("--device-root prismal/device -o named.png").status, 0);
  EXPECT_EQ(picture("installed.png"), picture("named.png"));
  EXPECT_EQ(face(picture("installed.png"), "Latin-Small-Letter-A"), kGreen);
  EXPECT_EQ(face(picture("system.png"), "Latin-Small-Letter-A"), 0xfffdfdfe);
}

TEST_F(Render, RefusesInOneLineThatNamesTheFile) {
  write("broken.plist", "<dict><key>a</key></array>");
  write("list.plist", "<array/>");
  write("fine.plist", "<dict/>");
  write("list.json", " {\"CustomColor\": []}");
  struct Case {
    std::string arguments;
    std::string says;
  };
  const Case cases[] = {
      {"missing.theme", "missing.theme: No such file or directory"},
      {"broken.plist", "broken.plist: line 1, column"},
      {"list.plist", "list.plist: a theme is a dictionary"},
      {"list.json",
       "list.json: line 1, column 1: no property list, neither XML nor binary; prismal convert"},
      {"fine.plist --press nothing", "--press nothing: no such key"},
      {"fine.plist -o no/such/x.png", "no/such/x.png: No such file or directory"},
      {"fine.plist --device-root .", "a THEME or --device-root, not both"},
      {"--device-root /", "own root can't be a device"},
      {"", "no THEME is given, and none is installed"},
      {"--device-root none", "no device at none: No such file or directory"},
      {"fine.plist --library fine.plist", "fine.plist"},
  };
  for (const Case& c : cases) {
    const Outcome outcome = run("--quiet " + c.arguments);
    EXPECT_EQ(outcome.status, 2) << c.arguments;
    EXPECT_NE(outcome.output.find(c.says), std::string::npos) << outcome.output;
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1) << outcome.output;
  }
  EXPECT_EQ(run("fine.plist --scale 3").status, 2);
  EXPECT_FALSE(fs::exists(folder() / "keyboard.png"));
}

TEST_F(Render, LeavesOutPicturesThatLieOutsideTheTheme) {
  write("outside.png", host::images::encodePng(host::images::solid(4, 4, 0, 0xff, 0, 0xff)));
  for (const std::string path : {"../outside.png", "link.png", "a/../../outside.png"}) {
    write("T.theme/theme.plist",
          "<dict><key>BackgroundImages</key><dict><key>Portrait</key><string>" + path +
              "</string></dict></dict>");
    fs::remove(folder() / "T.theme/link.png");
    fs::create_symlink(folder() / "outside.png", folder() / "T.theme/link.png");
    ASSERT_EQ(run("T.theme -o x.png").status, 0);
    EXPECT_NE(picture("x.png").at(0, 0), kGreen) << path;
  }
}

TEST_F(Render, FollowsLinksOnlyWhereTheirNameWasTyped) {
  const auto plant = [&](const std::string& name) {
    write("others.txt", "others");
    fs::remove(folder() / name);
    fs::create_directories((folder() / name).parent_path());
    fs::create_symlink(folder() / "others.txt", folder() / name);
  };
  const struct {
    const char* name;
    const char* arguments;
  } cases[] = {{"keyboard.png", "--system"},
               {"keyboard.png", "--system --sheet --device phone-4 --keyplane small-letters"}};
  for (const auto& c : cases) {
    plant(c.name);
    ASSERT_EQ(run(c.arguments).status, 0) << c.arguments;
    EXPECT_EQ(read("others.txt"), "others") << c.arguments;
    EXPECT_FALSE(fs::is_symlink(folder() / c.name)) << c.arguments;
    EXPECT_FALSE(read(c.name).empty()) << c.arguments;
  }
  // The first run tells how the files of a directory are named.
  const std::string all = "--system --all all --device phone-4 --keyplane small-letters";
  ASSERT_EQ(run(all).status, 0);
  const std::string one =
      (fs::path("all") / fs::directory_iterator(folder() / "all")->path().filename()).string();
  plant(one);
  ASSERT_EQ(run(all).status, 0);
  EXPECT_EQ(read("others.txt"), "others");
  EXPECT_FALSE(fs::is_symlink(folder() / one));
  plant("typed.png");
  ASSERT_EQ(run("--system -o typed.png").status, 0);
  EXPECT_TRUE(fs::is_symlink(folder() / "typed.png"));
  EXPECT_NE(read("others.txt"), "others");
}

}  // namespace
