// The user's settings, changed by the command and read by the library.

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "device_command.h"
#include "host/images/encode.h"
#include "host/plist/description.h"
#include "host/plist/reader.h"
#include "host/plist/writer.h"

namespace {

namespace fs = std::filesystem;

class Settings : public DeviceCommand {
 protected:
  Settings() {
    fs::create_directories(folder() / kDevice);
    write("green.png", host::images::encodePng(host::images::solid(2, 2, 0, 255, 0, 255)));
    write("red.png", host::images::encodePng(host::images::solid(2, 2, 255, 0, 0, 255)));
  }
  void device(const std::string& path, const std::string& bytes) const {
    write(kDevice + path, bytes);
  }
  std::string userFile() const {
    const auto reading = host::plist::read(readDevice(kUserSettings));
    return reading ? host::plist::describe(reading.list) : reading.reason;
  }
};

TEST_F(Settings, TheSwitchKeepsEverythingElse) {
  struct Case {
    std::string user;       // empty: no file
    std::string byDefault;  // likewise
    std::string after;
    std::string says;
  };
  const Case cases[] = {
      {"", "", "{usePrismal = 0; }", ""},
      {"<dict><key>own</key><integer>7</integer></dict>", "<dict><key>other</key><true/></dict>",
       "{own = 7; usePrismal = 0; }", ""},
      {"", "<dict><key>other</key><true/><key>usePrismal</key><true/></dict>",
       "{other = 1; usePrismal = 0; }", ""},
      {"<dict>", "<dict><key>other</key><true/></dict>", "{other = 1; usePrismal = 0; }",
       "net.quillon.prismal.plist: line 1, column 7: "},
      {"<array/>", "<array/>", "{usePrismal = 0; }", "no dictionary; it is replaced"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.user + c.byDefault);
    fs::remove_all(folder() / kDevice / "var");
    if (!c.user.empty()) device(kUserSettings, c.user);
    if (!c.byDefault.empty()) device(kDefaultSettings, c.byDefault);
    const Outcome outcome = prismal("settings usePrismal off", "2>&1 >/dev/null");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.output.find(c.says), std::string::npos) << outcome.output;
    EXPECT_EQ(outcome.output.empty(), c.says.empty()) << outcome.output;
    EXPECT_EQ(userFile(), c.after);
    EXPECT_EQ(readDevice(kDefaultSettings), c.byDefault);
  }
}

TEST_F(Settings, ABinaryFileStaysBinary) {
  const auto list =
      host::plist::read("<dict><key>at</key><date>2013-09-18T00:00:00Z</date></dict>");
  device(kUserSettings, host::plist::writeBinary(list.list));
  ASSERT_EQ(prismal("settings usePrismal on").status, 0);
  EXPECT_TRUE(readDevice(kUserSettings).starts_with("bplist"));
  EXPECT_EQ(userFile(), "{at = 2013-09-18 00:00:00 +0000; usePrismal = 1; }");
}

TEST_F(Settings, ABackgroundOfTheUsersOwn) {
  write("green@2x.png", read("red.png"));
  const std::string portrait = "settings background iPhone-Standard Portrait ";
  ASSERT_EQ(prismal(portrait + "green.png").status, 0);
  EXPECT_EQ(drawn().at(0, 0), 0xffff0000U);
  EXPECT_EQ(drawn("--scale 1").at(0, 0), 0xff00ff00U);
  EXPECT_EQ(prismal("settings").output,
            "SETTING                              VALUE\n"
            "usePrismal                           on\n"
            "background iPhone-Standard Portrait  "
            "/var/mobile/Library/Prismal/Pictures/Portrait;iPhone-Standard/green.png\n"
            "(from /var/mobile/Library/Preferences/net.quillon.prismal.plist)\n");

  // The sibling of the picture before doesn't stay.
  fs::remove(folder() / "green@2x.png");
  ASSERT_EQ(prismal(portrait + "green.png").status, 0);
  EXPECT_EQ(drawn().at(0, 0), 0xff00ff00U);
  EXPECT_EQ(files().size(), 2U);
  ASSERT_EQ(prismal("settings background iPhone-Standard Landscape red.png").status, 0);
  EXPECT_EQ(drawn("--orientation landscape").at(0, 0), 0xffff0000U);

  ASSERT_EQ(prismal(portrait + "--remove").status, 0);
  EXPECT_EQ(drawn().at(0, 0), 0xffd1d5dbU);
  ASSERT_EQ(prismal("settings background iPhone-Standard Landscape --remove").status, 0);
  EXPECT_EQ(userFile(), "{}");
  EXPECT_EQ(files().size(), 1U);
  const auto shown = nlohmann::json::parse(prismal("settings --json").output);
  EXPECT_EQ(shown["backgrounds"], nlohmann::json::array());
  EXPECT_EQ(shown["file"], kUserSettings);
}

TEST_F(Settings, RefusesInOneLineAndChangesNothing) {
  write("text.png", "no picture");
  write("half.png", read("red.png"));
  write("half@2x.png", read("red.png").substr(0, 40));
  device(kUserSettings, "<dict/>");
  struct Case {
    std::string arguments;
    std::string says;
  };
  const Case cases[] = {
      {"usePrismal", "VALUE is required"},
      {"usePrismal maybe", "VALUE"},
      {"background iPhone Portrait red.png", "STYLE is iPhone-Standard"},
      {"background 'iPad-Split;../x' Portrait red.png", "STYLE is iPhone-Standard"},
      {"background iPad-Split portrait red.png", "ORIENTATION"},
      {"background iPad-Split Portrait", "a PICTURE, or --remove"},
      {"background iPad-Split Portrait red.png --remove", "a PICTURE, or --remove"},
      {"background iPad-Split Portrait --remove", "no picture was chosen"},
      {"background iPad-Split Portrait none.png", "none.png: No such file or directory"},
      {"background iPad-Split Portrait text.png", "text.png: no picture: Neither PNG nor JPEG"},
      {"background iPad-Split Portrait half.png", "half@2x.png: no picture: "},
      {"background iPad-Split Portrait .", "prismal settings: "},
  };
  for (const Case& c : cases) {
    const Outcome outcome = prismal("settings " + c.arguments);
    EXPECT_EQ(outcome.status, 2) << c.arguments;
    EXPECT_NE(outcome.output.find(c.says), std::string::npos) << c.arguments << outcome.output;
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 1) << outcome.output;
  }
  EXPECT_EQ(userFile(), "{}");
  EXPECT_EQ(files().size(), 1U);

  // Nobody has said that it may go.
  fs::remove(onDevice(kUserSettings));
  fs::create_directories(onDevice(kUserSettings) / "below");
  const Outcome outcome = prismal("settings usePrismal off");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.output.find("net.quillon.prismal.plist: Is a directory"), std::string::npos);
  EXPECT_TRUE(fs::exists(onDevice(kUserSettings) / "below"));
}

}  // namespace
