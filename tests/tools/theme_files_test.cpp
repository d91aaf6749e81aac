// The files of a theme: where links lead, what is never overwritten, and what a stranger may have
// written into them.

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "device_command.h"
#include "host/images/encode.h"
#include "host/plist/builder.h"
#include "host/plist/writer.h"

namespace {

namespace fs = std::filesystem;

class ThemeFiles : public DeviceCommand {
 protected:
  ThemeFiles() {
    write("T.theme/theme.plist",
          colored(
              "#00FF00FF",
              "<key>BackgroundImages</key><dict><key>Portrait</key><string>p.png</string></dict>"));
    write("T.theme/p.png", host::images::encodePng(host::images::solid(2, 2, 0, 0, 255, 255)));
    write("settings.plist", "<dict/>");
    fs::create_directories(folder() / kDevice);
  }
  void link(const std::string& path, const fs::path& target) const {
    fs::create_directories((folder() / path).parent_path());
    fs::create_symlink(target, folder() / path);
  }
};

TEST_F(ThemeFiles, AListMayBeALinkToAnywhereAndPicturesAreThoseBesideIt) {
  link("A.plist", folder() / "T.theme/theme.plist");
  link("below/B.plist", "../T.theme/theme.plist");
  write("below/p.png", read("T.theme/p.png"));
  write("Own.theme/list.plist", read("T.theme/theme.plist"));
  link("Own.theme/theme.plist", "list.plist");
  link("C.plist", "T.theme/theme.plist");
  link("settings-link.plist", folder() / "settings.plist");
  struct Case {
    std::string theme;
    bool hasPicture;
  };
  const Case cases[] = {
      {"A.plist", false}, {"below/B.plist", true}, {"C.plist", false}, {"Own.theme", false}};
  for (const auto& [theme, hasPicture] : cases) {
    const auto keyboard = drawn(theme + " --settings settings-link.plist");
    EXPECT_EQ(keyboard.at(10, 60), 0xff00ff00U) << theme;
    EXPECT_EQ(keyboard.at(0, 0) == 0xff0000ffU, hasPicture) << theme;
    // What is missing or has no sibling is told in the link, with its place.
    EXPECT_EQ(prismal("check " + theme).output.find(theme), 0U) << theme;
    EXPECT_EQ(prismal("install " + theme).status, 0) << theme;
  }
}

TEST_F(ThemeFiles, TheListOfAFolderIsNotReadFromElsewhere) {
  // Else a stranger's folder could have any file of its user's quoted.
  write("secret", "a secret");
  link("A.theme/theme.plist", folder() / "secret");
  link("B.theme/theme.plist", "../secret");
  for (const std::string theme : {"A.theme", "B.theme"}) {
    for (const std::string command : {"render ", "check ", "install ", "explain --key g "}) {
      const Outcome outcome = prismal(command + theme);
      EXPECT_EQ(outcome.status, 2) << command << theme;
      EXPECT_NE(outcome.output.find("a link that leads out of the folder"), std::string::npos)
          << command << theme << outcome.output;
      EXPECT_EQ(outcome.output.find("secret"), std::string::npos);
    }
  }
}

TEST_F(ThemeFiles, APictureThatIsALinkOutOfTheFolderIsToldAndStaysOut) {
  struct Case {
    std::string target;
    std::string says;
  };
  const Case cases[] = {
      {(folder() / "T.theme/p.png").string(), "a link that leads out of the folder"},
      {"../T.theme/p.png", "a link that leads out of the folder"},
      {"none.png", "No such file or directory"},
      {"own.png", ""}};
  write("L.theme/own.png", read("T.theme/p.png"));
  write("L.theme/theme.plist", read("T.theme/theme.plist"));
  for (const auto& [target, says] : cases) {
    fs::remove(folder() / "L.theme/p.png");
    link("L.theme/p.png", target);
    EXPECT_EQ(prismal("install L.theme", "2>&1 >/dev/null").output,
              says.empty() ? "" : "L: BackgroundImages: Portrait: p.png: " + says + "\n");
    const bool leadsOut = says.starts_with("a link");
    EXPECT_EQ(prismal("check L.theme").output.find("[image-outside]") != std::string::npos,
              leadsOut)
        << target;
  }
}

TEST_F(ThemeFiles, NothingIsDrawnOverWhatItIsDrawnFrom) {
  link("linked.theme", "T.theme");
  fs::create_hard_link(folder() / "T.theme/p.png", folder() / "hard.png");
  write("Other.plist", "<dict/>");
  const std::string list = read("T.theme/theme.plist");
  const std::string image = read("T.theme/p.png");
  const std::string refused[] = {
      "render T.theme -o T.theme/theme.plist",
      "render T.theme -o linked.theme/p.png",
      "render T.theme -o hard.png",
      "render T.theme -o T.theme/../T.theme/p@2x.png",  // not there yet
      "render T.theme -o x.png --keys T.theme/theme.plist",
      "render T.theme --diff Other.plist -o Other.plist",
      "render T.theme --settings settings.plist -o settings.plist",
      "watch T.theme -o T.theme/p.png",
      "explain T.theme --rule 0 --style iPhone-Standard -o T.theme/p.png",
  };
  for (const std::string& command : refused) {
    const Outcome outcome = prismal(command);
    EXPECT_EQ(outcome.status, 2) << command;
    EXPECT_NE(outcome.output.find(": is read for what is to be written; choose another file\n"),
              std::string::npos)
        << command << ": " << outcome.output;
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 1) << command;
  }
  EXPECT_EQ(read("T.theme/theme.plist"), list);
  EXPECT_EQ(read("T.theme/p.png"), image);
  EXPECT_FALSE(fs::exists(folder() / "T.theme/p@2x.png"));
  for (const char* allowed : {"T.theme -o T.theme/other.png", "-o hard.png", "T.theme -o -"}) {
    EXPECT_EQ(prismal(std::string("render --quiet ") + allowed, "2>&1 >/dev/null").status, 0)
        << allowed;
  }
}

/// A list that XML can't hold: every text in it moves the cursor and begins a line.
std::string hostileTheme() {
  using host::plist::Builder;
  Builder b;
  const auto text = [&](const std::string& begin) {
    return b.string(b.keep(begin + "\x1b[2J\nprismal: "));
  };
  const platform::PropertyListView color[] = {text("Name"), text("#FF")};
  const platform::PropertyListView colors[] = {b.array(color)};
  const Builder::Entry sets[] = {{"TextColor", text("Accent")}, {"FontName", text("Font")}};
  const platform::PropertyListView rule[] = {text("*;KeyName="), b.dictionary(sets)};
  const platform::PropertyListView other[] = {text("KeyName="), b.dictionary(sets)};
  const platform::PropertyListView rules[] = {b.array(rule), b.array(other)};
  const Builder::Entry styles[] = {{"iPhone-Standard", b.array(rules)},
                                   {b.keep("iPad\x1b[2J\nprismal: "), b.string("x")}};
  const Builder::Entry images[] = {{"Portrait", text("p")},
                                   {b.keep("Key\x1b[2J\nprismal: "), text("../")}};
  const Builder::Entry sections[] = {{"CustomColor", b.array(colors)},
                                     {"Styles", b.dictionary(styles)},
                                     {"BackgroundImages", b.dictionary(images)}};
  return host::plist::writeBinary(b.dictionary(sections));
}

TEST_F(ThemeFiles, WhatAStrangerWroteStaysOnItsLine) {
  write("H.theme/theme.plist", hostileTheme());
  write("H.theme/p\x1b[2J\nprismal: ", "no picture");
  const std::string commands[] = {
      "render H.theme",
      "check H.theme",
      "check --format full --color never H.theme",
      "explain H.theme --key a",
      "explain H.theme --rule 0 --style iPhone-Standard",
      "install H.theme",
      "list",
      "render",
  };
  for (const std::string& command : commands) {
    const Outcome outcome = prismal(command);
    EXPECT_NE(outcome.status, 2) << command << ": " << outcome.output;
    EXPECT_EQ(outcome.output.find('\x1b'), std::string::npos) << command << ": " << outcome.output;
    EXPECT_EQ(("\n" + outcome.output).find("\nprismal: "), std::string::npos)
        << command << ": " << outcome.output;
    EXPECT_TRUE(outcome.output.find("\\u001b[2J\\nprismal: ") != std::string::npos ||
                command == "list")
        << command << ": " << outcome.output;
  }
}

}  // namespace
