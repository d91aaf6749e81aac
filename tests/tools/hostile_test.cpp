// Themes, settings and pictures of strangers who mean no good: each comes to an end in bounded time
// and memory, with a reason in one line, and the keyboard is drawn wherever there is one.

#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

#include "device_command.h"
#include "host/images/encode.h"

namespace {

namespace fs = std::filesystem;

std::string repeated(const std::string& text, std::size_t times) {
  std::string all;
  all.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

std::string inDictionary(const std::string& entries) {
  return "<plist><dict>" + entries + "</dict></plist>";
}

std::string inRules(const std::string& rules) {
  return inDictionary("<key>Styles</key><dict><key>iPhone-Standard</key><array>" + rules +
                      "</array></dict>");
}

std::string ruleOf(const std::string& condition) {
  return "<array><string>" + condition + "</string><dict/></array>";
}

std::string bigEndian(std::uint64_t number, int bytes) {
  std::string text;
  for (int i = bytes - 1; i >= 0; --i) text += static_cast<char>(number >> (8 * i) & 255);
  return text;
}

/// A binary list whose objects are these, the first of them its root.
std::string binaryOf(const std::vector<std::string>& objects) {
  std::string bytes = "bplist00";
  std::string offsets;
  for (const std::string& object : objects) {
    offsets += bigEndian(bytes.size(), 4);
    bytes += object;
  }
  const std::size_t table = bytes.size();
  return bytes + offsets + std::string(6, '\0') + "\x04\x03" + bigEndian(objects.size(), 8) +
         bigEndian(0, 8) + bigEndian(table, 8);
}

/// An array of `times` times the object `index`.
std::string arrayOf(std::uint64_t index, std::size_t times) {
  return "\xAF\x13" + bigEndian(times, 8) + repeated(bigEndian(index, 3), times);
}

std::string nestedInBinary(std::size_t depth) {
  std::vector<std::string> objects;
  for (std::size_t i = 1; i <= depth; ++i) objects.push_back(arrayOf(i, 1));
  objects.emplace_back("\x09");
  return binaryOf(objects);
}

std::string multiplied(std::size_t levels) {
  std::vector<std::string> objects;
  for (std::size_t i = 1; i <= levels; ++i) objects.push_back(arrayOf(i, 10));
  objects.emplace_back("\x09");
  return binaryOf(objects);
}

class Hostile : public DeviceCommand {
 protected:
  Hostile() { write("Plain.theme/theme.plist", colored("#FF0000FF")); }

  /// Within ten seconds and a gigabyte, unless instruments of the build need more.
  Outcome bounded(const std::string& arguments, const std::string& redirection = "2>&1") const {
#ifdef __SANITIZE_ADDRESS__
    const std::string limits = "timeout 120 ";
#else
    const std::string limits = "ulimit -v 1000000; timeout 20 ";
#endif
    return script(limits + "prismal " + arguments + " " + redirection);
  }

  void theme(const std::string& bytes) const {
    write("T.theme/theme.plist", bytes);
  }

  void sparse(const fs::path& path, const std::string& start) const {
    write(path, start);
    fs::resize_file(folder() / path, std::uintmax_t{1} << 30U);
  }

  /// The picture of a device that is empty but for what is there now.
  std::string pictureOf(const std::string& arguments) const {
    fs::remove(folder() / "drawn.png");
    const Outcome outcome = bounded("render -o drawn.png " + arguments);
    EXPECT_EQ(outcome.status, 0) << arguments << outcome.output;
    return read("drawn.png");
  }
};

TEST_F(Hostile, ListsBeyondTheBoundsAreRefusedInOneLine) {
  struct Case {
    const char* name;
    std::function<std::string()> bytes;
    const char* reason;
  };
  const Case cases[] = {
      {"a million deep", [] { return repeated("<array>", 1'000'000); },
       "containers nest deeper than 512"},
      {"a million deep, binary", [] { return nestedInBinary(1'000'000); },
       "containers nest deeper than 512"},
      {"ten to the power of a hundred", [] { return multiplied(100); },
       "more than 1000000 values once what is shared is written out"},
      {"in itself", [] { return binaryOf({arrayOf(0, 1)}); },
       "object 0 at offset 8: it contains itself"},
      {"shared texts",
       [] {
         return binaryOf(
             {arrayOf(1, 100), "\x5F\x13" + bigEndian(1U << 20U, 8) + std::string(1U << 20U, 'a')});
       },
       "more than 64 MiB of text once what is shared is written out"},
      {"a million values and one",
       [] { return "<array>" + repeated("<true/>", 1'000'000) + "</array>"; },
       "more than 1000000 values"},
      {"a number of a million digits",
       [] {
         return inDictionary("<key>a</key><integer>" + std::string(1'000'000, '9') + "</integer>");
       },
       "<integer> does not hold an integer of 64 bits"},
      {"entities that multiply",
       [] {
         return std::string("<!DOCTYPE p [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]><dict/>");
       },
       "a document type that declares something"},
  };
  for (const Case& c : cases) {
    theme(c.bytes());
    for (const char* command : {"render T.theme -o t.png", "check T.theme", "install T.theme",
                                "explain T.theme --key g", "convert T.theme/theme.plist -o t.json",
                                "render Plain.theme --settings T.theme/theme.plist -o t.png"}) {
      const Outcome outcome = bounded(command);
      EXPECT_EQ(outcome.status, 2) << c.name << ": " << command << outcome.output.substr(0, 500);
      EXPECT_NE(outcome.output.find(c.reason), std::string::npos)
          << c.name << ": " << command << outcome.output.substr(0, 500);
      EXPECT_LT(outcome.output.size(), 600U) << c.name << ": " << command;
    }
    EXPECT_FALSE(fs::exists(folder() / "t.png"));
  }
}

TEST_F(Hostile, FilesOfAGigabyteAreNotRead) {
  for (const std::string start : {"<plist><dict>", "bplist00"}) {
    sparse("T.theme/theme.plist", start);
    for (const char* command : {"render T.theme -o t.png", "check T.theme", "install T.theme",
                                "convert T.theme/theme.plist -o t.json"}) {
      const Outcome outcome = bounded(command);
      EXPECT_EQ(outcome.status, 2) << command;
      const bool tells = outcome.output.find("arger than 67108864 bytes") != std::string::npos ||
                         outcome.output.find("more than 64 MiB") != std::string::npos;
      EXPECT_TRUE(tells) << command << outcome.output;
    }
  }
  theme(inDictionary(
      "<key>BackgroundImages</key><dict><key>Portrait</key><string>p.png</string></dict>"));
  sparse("T.theme/p.png", "\x89PNG\r\n\x1a\n");
  const Outcome outcome = bounded("render T.theme -o t.png");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.output.find("T: BackgroundImages: Portrait: p.png: Larger than"),
            std::string::npos)
      << outcome.output;
}

TEST_F(Hostile, WhatIsWithinTheBoundsIsDrawn) {
  struct Case {
    const char* name;
    std::string bytes;
  };
  const Case cases[] = {
      {"a condition of a megabyte", inRules(ruleOf("KeyName=" + repeated("a,", 500'000)))},
      {"10,000 terms that hold for no key",
       inRules(ruleOf(repeated("Row=Row1;", 10'000) + "Row=Row2"))},
      {"a megabyte of terms", inRules(ruleOf(repeated("Row=Row1,Row2,Row3,Row4;", 40'000)))},
      {"50,000 rules", inRules(repeated(ruleOf("KeyName=q"), 50'000))},
      {"50,000 rules that are none", inRules(repeated("<true/>", 50'000))},
      {"a key of a megabyte",
       inDictionary("<key>" + std::string(1'000'000, 'k') + "</key><true/>")},
      {"100,000 equal keys", inDictionary(repeated("<key>k</key><true/>", 100'000))},
      {"a font of a megabyte",
       inRules("<array><string>*</string><dict><key>FontName</key><string>" +
               repeated("F-", 500'000) + "</string></dict></array>")},
      {"offsets without measure",
       inRules("<array><string>*</string><dict><key>EtchOffsetX</key><real>1e308</real>"
               "<key>EtchOffsetY</key><integer>-9223372036854775808</integer></dict></array>")},
  };
  for (const Case& c : cases) {
    theme(c.bytes);
    EXPECT_FALSE(pictureOf("T.theme").empty()) << c.name;
    const Outcome checked = bounded("check T.theme");
    EXPECT_LT(checked.status, 2) << c.name << checked.output.substr(0, 500);
    EXPECT_LT(checked.output.size(), 4'000'000U) << c.name;
    const Outcome explained = bounded("explain T.theme --key q | tail -c 1000");
    EXPECT_FALSE(explained.output.empty()) << c.name;
  }
}

TEST_F(Hostile, WhatIsToldHasAnEnd) {
  std::string colors;
  std::string images;
  for (int i = 0; i < 3000; ++i) {
    colors += "<array><string>n" + std::to_string(i) + "</string></array>";
    images += "<key>k" + std::to_string(i) + "</key><string>m" + std::to_string(i) + "</string>";
  }
  theme(inDictionary("<key>CustomColor</key><array>" + colors +
                     "</array><key>BackgroundImages</key><dict>" + images + "<key>" +
                     std::string(100'000, 'k') + "\x7F</key><string>z</string></dict>"));
  Outcome outcome = bounded("render T.theme -o t.png");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_LT(outcome.output.size(), 100'000U);
  EXPECT_NE(outcome.output.find("\nmore lines follow, which are not told\n"), std::string::npos);
  EXPECT_NE(outcome.output.find("\nT: BackgroundImages: 2801 more like these\n"),
            std::string::npos);
  outcome = bounded("install T.theme");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_LT(outcome.output.size(), 100'000U);
  // One value that is as long as a list may be.
  theme(inDictionary("<key>CustomColor</key><array><array><string>" +
                     std::string(5'000'000, '\x7F') + "</string></array></array>"));
  outcome = bounded("render T.theme -o t.png");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_LT(outcome.output.size(), 150'000U);
}

TEST_F(Hostile, AMillionSettingsAreRead) {
  std::string entries;
  for (int i = 0; i < 200'000; ++i) entries += "<key>a" + std::to_string(i) + "</key><true/>";
  write("settings.plist", inDictionary(entries + "<key>usePrismal</key><false/>"));
  write("few.plist", inDictionary("<key>usePrismal</key><false/>"));
  EXPECT_EQ(pictureOf("Plain.theme --settings settings.plist"),
            pictureOf("Plain.theme --settings few.plist"));
  EXPECT_NE(pictureOf("Plain.theme --settings few.plist"), pictureOf("Plain.theme"));
}

TEST_F(Hostile, OneFileUnderManyNamesIsCopiedOnce) {
  std::string keys;
  for (int i = 0; i < 20'000; ++i)
    keys += "<key>k" + std::to_string(i) + "</key><string>./p.png</string>";
  theme(inDictionary("<key>BackgroundImages</key><dict>" + keys + "</dict>"));
  write("T.theme/p.png", std::string(1 << 20, 'x'));
  const Outcome outcome = bounded("install T.theme");
  EXPECT_EQ(outcome.status, 0) << outcome.output;
  EXPECT_EQ(fs::file_size(onDevice("/var/mobile/Library/Prismal/Themes/T/p.png")), 1U << 20U);
}

TEST_F(Hostile, PicturesAreBoundedTogether) {
  // As many links as one likes lead to the same file.
  std::string keys;
  write("T.theme/p.png", std::string(std::size_t{30} << 20U, 'x'));
  for (int i = 0; i < 20; ++i) {
    const std::string name = "p" + std::to_string(i) + ".png";
    fs::create_symlink("p.png", folder() / "T.theme" / name);
    keys += "<key>k" + std::to_string(i) + "</key><string>" + name + "</string>";
  }
  theme(inDictionary("<key>BackgroundImages</key><dict>" + keys + "</dict>"));
  const Outcome outcome = bounded("install T.theme");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.output.find("the pictures are larger together than 256 MiB"), std::string::npos)
      << outcome.output;
  std::uintmax_t bytes = 0;
  for (const auto& file : fs::recursive_directory_iterator(onDevice("/var/mobile"))) {
    if (file.is_regular_file()) bytes += file.file_size();
  }
  EXPECT_LT(bytes, std::uintmax_t{257} << 20U);
}

/// Puts something that is no file at a path of this machine.
struct NoFile {
  const char* name;
  std::function<void(const fs::path&)> make;
  const char* reason;
};

void makeSocket(const fs::path& path) {
  // Names of sockets are short, so it is made where its name is.
  const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strcpy(address.sun_path, "socket");
  const fs::path before = fs::current_path();
  fs::current_path(path.parent_path());
  EXPECT_EQ(::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  fs::current_path(before);
  ::close(descriptor);
  fs::rename(path.parent_path() / "socket", path);
}

const NoFile kNoFiles[] = {
    {"a pipe", [](const fs::path& path) { ::mkfifo(path.c_str(), 0600); }, "Not a regular file"},
    {"a directory", [](const fs::path& path) { fs::create_directories(path / "below"); },
     "Is a directory"},
    {"a socket", makeSocket, "No such device or address"},
    {"a link to itself", [](const fs::path& path) { fs::create_symlink(path.filename(), path); },
     "Too many levels of symbolic links"},
    {"a link that dangles", [](const fs::path& path) { fs::create_symlink("nothing", path); },
     "No such file or directory"},
    {"a link to a device", [](const fs::path& path) { fs::create_symlink("/dev/zero", path); },
     "a link that leads out of the folder"},
    {"a link that climbs",
     [](const fs::path& path) { fs::create_symlink("../../../../../../../../etc/passwd", path); },
     "a link that leads out of the folder"},
    {"a link to a file of the machine",
     [](const fs::path& path) { fs::create_symlink("/etc/passwd", path); },
     "a link that leads out of the folder"},
};

TEST_F(Hostile, WhatIsNoFileIsRefusedWithoutWaiting) {
  for (const NoFile& c : kNoFiles) {
    fs::remove_all(folder() / "T.theme");
    fs::create_directories(folder() / "T.theme");
    c.make(folder() / "T.theme/theme.plist");
    for (const char* command :
         {"render T.theme -o t.png", "check T.theme", "install T.theme", "explain T.theme --key g",
          "render Plain.theme --settings T.theme/theme.plist -o t.png"}) {
      const Outcome outcome = bounded(command);
      EXPECT_EQ(outcome.status, 2) << c.name << ": " << command << outcome.output;
      // A theme's folder without its list is told in words of its own, and settings may lie
      // anywhere.
      const bool isOfSettings = std::string_view(command).starts_with("render Plain");
      const bool lacksList = std::string_view(c.reason).starts_with("No such file");
      EXPECT_NE(outcome.output.find(lacksList || isOfSettings ? "theme.plist" : c.reason),
                std::string::npos)
          << c.name << ": " << command << outcome.output;
    }
  }
}

TEST_F(Hostile, APictureThatIsNoFileIsMissing) {
  const std::string expected = pictureOf("Plain.theme");
  for (const NoFile& c : kNoFiles) {
    fs::remove_all(folder() / "T.theme");
    theme(colored("#FF0000FF",
                  "<key>BackgroundImages</key><dict><key>Portrait</key>"
                  "<string>p.png</string></dict>"));
    c.make(folder() / "T.theme/p.png");
    const Outcome outcome = bounded("render T.theme -o t.png");
    EXPECT_EQ(outcome.status, 0) << c.name;
    EXPECT_NE(outcome.output.find("T: BackgroundImages: Portrait: p.png: " + std::string(c.reason)),
              std::string::npos)
        << c.name << outcome.output;
    EXPECT_EQ(read("t.png"), expected) << c.name;
    EXPECT_EQ(bounded("install T.theme").status, 0) << c.name;
    EXPECT_EQ(bounded("check T.theme").status, 1) << c.name;
  }
}

TEST_F(Hostile, ADeviceOfThingsThatAreNoFilesShowsItsKeyboard) {
  ASSERT_EQ(prismal("install Plain.theme").status, 0);
  fs::remove(onDevice(kMergedTheme));
  const std::string plain = pictureOf("");
  for (const NoFile& c : kNoFiles) {
    for (const char* path : {kMergedTheme, kUserSettings, kDefaultSettings}) {
      c.make(onDevice(path));
      EXPECT_EQ(pictureOf(""), plain) << c.name << path;
      EXPECT_LT(bounded("settings").status, 3) << c.name << path;
      EXPECT_LT(bounded("list").status, 3) << c.name << path;
      fs::remove_all(onDevice(path));
    }
  }
  // What is chosen for a background is asked for on this machine, and its neighbour as well.
  write("mine/p.png", host::images::encodePng(host::images::solid(3, 3, 1, 2, 3, 255)));
  ::mkfifo((folder() / "mine/p@2x.png").c_str(), 0600);
  ::mkfifo((folder() / "mine/pipe.png").c_str(), 0600);
  for (const char* name : {"p.png", "pipe.png"}) {
    const Outcome outcome =
        bounded("settings background iPhone-Standard Portrait mine/" + std::string(name));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.output.find("Not a regular file"), std::string::npos) << outcome.output;
  }
}

TEST_F(Hostile, PathsOfAThemeStayInItsFolder) {
  write("outside.png", host::images::encodePng(host::images::solid(3, 3, 1, 2, 3, 255)));
  const std::string outside = (folder() / "outside.png").string();
  const struct {
    std::string path;
    std::string reason;
  } cases[] = {
      {"../outside.png", "leads out of the folder"},
      {"a/../../outside.png", "leads out of the folder"},
      {"a/b/../../../T.theme/../outside.png", "leads out of the folder"},
      {outside, "a path of the device; not on the one that is drawn"},
      {"/var/../.." + outside, "a path of the device; not on the one that is drawn"},
      {std::string(5000, 'a'), "File name too long"},
      {repeated("a/", 3000) + "p.png", "File name too long"},
  };
  const std::string expected = pictureOf("Plain.theme");
  for (const auto& c : cases) {
    theme(colored("#FF0000FF", "<key>BackgroundImages</key><dict><key>Portrait</key><string>" +
                                   c.path + "</string></dict>"));
    const Outcome outcome = bounded("render T.theme -o t.png");
    EXPECT_EQ(outcome.status, 0);
    const std::string line = "T: BackgroundImages: Portrait: " + c.path.substr(0, 100);
    const auto at = outcome.output.find(line);
    ASSERT_NE(at, std::string::npos) << outcome.output;
    EXPECT_EQ(outcome.output.find(line, at + 1), std::string::npos) << "told twice";
    EXPECT_NE(outcome.output.find(c.reason), std::string::npos) << outcome.output;
    EXPECT_EQ(read("t.png"), expected) << c.path.substr(0, 100);
  }
  write("settings.plist", inDictionary("<key>backgroundImages</key><dict><key>iPhone-Standard</key>"
                                       "<dict><key>Portrait</key><string>" +
                                       outside + "</string></dict></dict>"));
  const Outcome outcome = bounded("render Plain.theme --settings settings.plist -o t.png");
  EXPECT_NE(
      outcome.output.find("settings: backgroundImages: " + outside + ": a path of the device"),
      std::string::npos)
      << outcome.output;
}

TEST_F(Hostile, WhatIsInterruptedLeavesNothing) {
  // Minutes of work.
  theme(inRules(repeated(ruleOf("KeyName=" + repeated(",", 1'000'000)), 40)));
  fs::create_directories(folder() / "temporary");
  // The process that stays outside the sandbox clears away once the other is gone.
  const std::string soonEmpty =
      "for i in $(seq 100); do [ -z \"$(ls -A temporary)\" ] && break; sleep 0.05; done; ";
  const struct {
    const char* signal;
    int number;
  } signals[] = {{"INT", SIGINT}, {"TERM", SIGTERM}, {"HUP", SIGHUP}};
  for (const auto& signal : signals) {
    for (const char* command : {"render T.theme -o t.png", "render T.theme --sheet -o t.png"}) {
      // A shell's own background jobs don't see SIGINT.
      const Outcome outcome =
          script("export TMPDIR=\"$PWD/temporary\"; timeout --foreground -s " +
                 std::string(signal.signal) + " 0.4 prismal " + command + "; code=$?; " +
                 soonEmpty + "ls -A temporary; ls | grep -c t.png; exit $code");
      EXPECT_EQ(outcome.output, "0\n") << command << signal.signal;
      EXPECT_EQ(outcome.status, 124) << command << signal.signal;
    }
  }
  EXPECT_EQ(
      script("export TMPDIR=\"$PWD/temporary\"; prismal render T.theme -o t.png & "
             "while [ -z \"$(ls -A temporary)\" ]; do sleep 0.01; done; kill -TERM $!; wait $!")
          .status,
      128 + SIGTERM);
  EXPECT_TRUE(fs::is_empty(folder() / "temporary"));
}

}  // namespace
