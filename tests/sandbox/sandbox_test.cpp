// What a process that reads a stranger's theme can still do, from outside: a library that tries all
// sorts of things is loaded in place of the real one.

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>

#include "command.h"
#include "sandbox/landlock.h"
#include "sandbox/system_calls.h"

namespace {

namespace fs = std::filesystem;
using Tried = std::map<std::string, int>;

constexpr const char* kTheme = "<dict><key>BackgroundImages</key><dict/></dict>";

struct Try {
  const char* name;
  int withTheme;   // the errno value in a sandbox around a theme
  int withDevice;  // and in one around a device that stays
};

// Some are refused by the rules for files, some by the filter of system calls.
constexpr Try kTries[] = {
    {"read-other", EACCES, EACCES},  {"read-theme", EACCES, EACCES},
    {"write-theme", EACCES, EACCES}, {"write-device", EACCES, EACCES},
    {"read-device", EACCES, 0},      {"write-beside", EACCES, EACCES},
    {"list", EACCES, EACCES},        {"rename", EACCES, EACCES},
    {"link", EACCES, EACCES},        {"remove", EACCES, EACCES},
    {"change-mode", EPERM, EPERM},   {"read-font", 0, 0},
    {"network", EPERM, EPERM},       {"local-socket", EPERM, EPERM},
    {"signal", EPERM, EPERM},        {"program", EPERM, EACCES},
    {"limits", EPERM, EPERM},        {"slow-down", EPERM, EPERM},
    {"unnamed-file", EPERM, EPERM},  {"change-open-mode", EACCES, EPERM},
    {"input", ENODATA, ENODATA},
};

class Sandbox : public Command {
 protected:
  void SetUp() override {
    if (!tools::sandbox::FileRules::areOffered() || !tools::sandbox::isFilterOffered()) {
      GTEST_SKIP() << "this kernel offers no sandbox";
    }
    write("T.theme/theme.plist", kTheme);
    write("device/var/mobile/kept.txt", "kept");
    write("other.txt", "other");
    write("input.txt", std::string(1000, 'x'));
  }

  /// What the library could do in the process that `arguments` start.
  Tried tried(const std::string& arguments) const {
    write("gone.txt", "going");
    for (const char* made : {"made.txt", "link"}) fs::remove(folder() / made);
    const Outcome outcome = script("PROBE='" + folder().string() + "' " + arguments +
                                   " --library '" PROBING_LIBRARY "' 2>&1 < input.txt");
    Tried results;
    std::istringstream lines(outcome.output);
    for (std::string name; lines >> name;) {
      if (int error = 0; lines >> error) results[name] = error;
      lines.clear();
    }
    EXPECT_NE(outcome.output.find("tried\n"), std::string::npos) << outcome.output;
    return results;
  }

  static void expect(const Tried& results, int Try::*error) {
    for (const Try& one : kTries) {
      ASSERT_TRUE(results.contains(one.name)) << one.name;
      EXPECT_EQ(results.at(one.name), one.*error) << one.name;
    }
  }
};

TEST_F(Sandbox, LeavesTheDeviceAloneToTheProcessThatReadsATheme) {
  for (const char* command :
       {"prismal render T.theme -o x.png", "prismal render T.theme -o x.png --sandbox",
        "prismal render T.theme --beside-system -o x.png",
        "prismal render T.theme --sheet --device phone-4 -o x.png",
        "prismal render T.theme --all all --device phone-4", "prismal check T.theme",
        // Its drawings go on until it is interrupted.
        "timeout -s INT 2 prismal watch T.theme -o x.png"}) {
    SCOPED_TRACE(command);
    expect(tried(command), &Try::withTheme);
  }
}

TEST_F(Sandbox, LeavesAnInstalledDeviceToBeRead) {
  expect(tried("prismal render --device-root device -o x.png"), &Try::withDevice);
}

TEST_F(Sandbox, CanBeDoneWithout) {
  for (const char* command :
       {"prismal render T.theme -o x.png --no-sandbox", "prismal check T.theme --no-sandbox"}) {
    SCOPED_TRACE(command);
    for (const auto& [name, error] : tried(command)) EXPECT_EQ(error, 0) << name;
  }
}

TEST_F(Sandbox, ChangesNoPicture) {
  write("F.theme/theme.plist",
        "<dict><key>Styles</key><dict><key>iPhone-Standard</key><array><array><string></string>"
        "<dict><key>FontName</key><string>DejaVu "
        "Serif</string></dict></array></array></dict></dict>");
  for (const char* arguments :
       {"'" PRISMAL_EXAMPLES "/Dusk.theme'", "'" PRISMAL_EXAMPLES "/Strata.theme' --device tablet",
        "--system", "F.theme", "'" PRISMAL_EXAMPLES "/Tides.theme' --sheet --device phone-4",
        "'" PRISMAL_EXAMPLES "/Dusk.theme' --diff '" PRISMAL_EXAMPLES "/Linen.theme'",
        "--device-root device"}) {
    const std::string drawing = std::string("render --quiet ") + arguments;
    const Outcome with = prismal(drawing + " -o with.png");
    const Outcome without = prismal(drawing + " -o without.png --no-sandbox");
    EXPECT_LE(with.status, 1) << with.output;
    EXPECT_EQ(with.status, without.status) << arguments;
    EXPECT_FALSE(read("with.png").empty()) << arguments;
    EXPECT_TRUE(read("with.png") == read("without.png")) << arguments;
  }
}

TEST_F(Sandbox, LetsTheLibraryEmptyTheKeyboardsCache) {
  const std::string cached = "device/var/mobile/Library/Caches/com.apple.keyboards/old";
  write(cached, "a picture of a key");
  const Outcome outcome = prismal("render --device-root device -o x.png");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.output.find("PM: Clear Keyboard Cache: 0\n"), std::string::npos)
      << outcome.output;
  EXPECT_FALSE(fs::exists(folder() / cached));
  // Without the library, pictures of keys are kept on a device.
  EXPECT_EQ(prismal("render --system --device-root device -o x.png").status, 0);
  EXPECT_FALSE(fs::is_empty((folder() / cached).parent_path()));
}

TEST_F(Sandbox, IsMissedOnceAndInOneLine) {
  const std::string bare = "'" WITHOUT_LANDLOCK "' \"$(command -v prismal)\" ";
  for (const std::string command :
       {"render T.theme --quiet -o x.png", "render T.theme --diff T.theme --quiet -o x.png",
        "check T.theme T.theme T.theme --quiet"}) {
    const Outcome outcome = script(bare + command + " 2>&1");
    EXPECT_EQ(outcome.status, 0) << command;
    EXPECT_EQ(outcome.output, "prismal " + command.substr(0, command.find(' ')) +
                                  ": the sandbox leaves files open: this kernel offers no "
                                  "Landlock; --no-sandbox leaves this line out\n");
    EXPECT_EQ(script(bare + command + " --no-sandbox 2>&1").output, "");
  }
}

TEST_F(Sandbox, LeavesNothingBehindWhenItsProcessIsKilled) {
  fs::create_directories(folder() / "tmp");
  const Outcome outcome = script(
      "{ TMPDIR=\"$PWD/tmp\" PROBE_WAITS=1 prismal render T.theme -o killed.png --library "
      "'" PROBING_LIBRARY
      "' & for try in $(seq 1000); do [ -e tmp/*/var ] && break; sleep 0.01; "
      "done; ls tmp; kill -KILL $!; }");
  EXPECT_TRUE(outcome.output.starts_with("prismal-")) << outcome.output;
  for (int tries = 0; tries < 500 && !fs::is_empty(folder() / "tmp"); ++tries) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_TRUE(fs::is_empty(folder() / "tmp"));
  for (const auto& entry : fs::directory_iterator(folder())) {
    EXPECT_FALSE(entry.path().filename().string().starts_with("killed.png"));
  }
}

}  // namespace
