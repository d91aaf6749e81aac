#include "host/files/shell.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "sample_device.h"

namespace host::files {
namespace {

namespace fs = std::filesystem;

constexpr const char* kCaches = "/var/mobile/Library/Caches";
constexpr const char* kKeyboards = "/var/mobile/Library/Caches/com.apple.keyboards";
constexpr const char* kPurge = "/bin/rm -rf /var/mobile/Library/Caches/com.apple.keyboards/*";

int purge(const SampleDevice& device) {
  return runShell(device.open(), kPurge);
}

TEST(Shell, ReturnsTheWaitStatus) {
  const SampleDevice device;
  const DeviceRoot root = device.open();
  const struct {
    std::string_view command;
    int status;
  } cases[] = {{"true", 0},
               {"false", 256},
               {"exit 3", 3 * 256},
               {"", 0},
               {"no-such-program 2>/dev/null", 127 * 256},
               {"-x 2>/dev/null", 127 * 256},
               {"rm /missing 2>/dev/null", 256}};
  for (const auto& [command, status] : cases) EXPECT_EQ(runShell(root, command), status) << command;
}

TEST(Shell, StartsNoShellForWhatCannotBeHeldInside) {
  const SampleDevice device;
  device.file("/a/b/file", "");
  device.link("/loop", "loop");
  const DeviceRoot root = device.open();
  using namespace std::string_view_literals;
  for (const auto command :
       {"rm -rf /a/*/file"sv, "rm -rf $x /a"sv, "rm -rf /loop/*"sv, "rm -rf /a\0"sv}) {
    EXPECT_EQ(runShell(root, command), -1) << command;
  }
  EXPECT_TRUE(root.exists("/a/b/file"));
}

TEST(Shell, PurgesTheContentsOfTheDirectory) {
  for (const Resolution resolution : waysToResolve()) {
    const SampleDevice device;
    device.file(kKeyboards + std::string("/a b"), "");
    device.file(kKeyboards + std::string("/-rf/tree/file"), "");
    device.file(kKeyboards + std::string("/$(exit 1)'\""), "");
    device.link(kKeyboards + std::string("/out"), device.absoluteWayOut());
    device.file(kKeyboards + std::string("/.hidden"), "");
    device.file(kCaches + std::string("/other"), "");
    EXPECT_EQ(runShell(device.open(resolution), kPurge), 0);
    EXPECT_EQ(*device.open(resolution).list("/"),
              (std::vector<std::string>{kKeyboards + std::string("/.hidden"),
                                        kCaches + std::string("/other")}));
    EXPECT_TRUE(device.outsideIsUntouched());
  }
}

TEST(Shell, PurgingWhatIsNotThereSucceeds) {
  const SampleDevice device;
  EXPECT_EQ(purge(device), 0);
  device.file(kCaches, "a file in its place");
  EXPECT_EQ(purge(device), 0);
  fs::remove(device.machine(kCaches));
  device.directory(kKeyboards);
  EXPECT_EQ(purge(device), 0);
}

// A process that has been waited for leaves its page faults here.
long faultsOfChildren() {
  rusage usage{};
  ::getrusage(RUSAGE_CHILDREN, &usage);
  return usage.ru_minflt + usage.ru_majflt;
}

TEST(Shell, StartsNoneForADirectoryThatIsNotThere) {
  const SampleDevice device;
  device.directory(kCaches);
  const DeviceRoot root = device.open();
  const struct {
    std::string_view command;
    int status;
    bool is_started;
  } cases[] = {{kPurge, 0, false},
               {"/bin/rm -rf '/missing'/*", 0, false},
               {"/bin/rm -rf /var/mobile/Library/Caches/*", 0, true},
               {"/bin/rm -rf /missing/* ; exit 3", 3 * 256, true},
               {"/bin/rm -rf /missing/* /missing/other", 0, true},
               {"/bin/rm -r /missing/* 2>/dev/null", 256, true}};
  for (const auto& [command, status, is_started] : cases) {
    const long before = faultsOfChildren();
    EXPECT_EQ(runShell(root, command), status) << command;
    EXPECT_EQ(faultsOfChildren() > before, is_started) << command;
  }
}

TEST(Shell, NoPlantedLinkLeadsThePurgeOutside) {
  for (const Resolution resolution : waysToResolve()) {
    for (const std::string place :
         {kKeyboards, kCaches, "/var/mobile/Library", "/var/mobile", "/var"}) {
      for (const bool absolute : {true, false}) {
        SCOPED_TRACE(place + (absolute ? " absolute" : " relative"));
        const SampleDevice device;
        device.link(place, absolute ? device.absoluteWayOut() : device.relativeWayOut());
        // What the purge would find below the link if it followed it.
        const fs::path below =
            device.outside() / std::string(kKeyboards).substr(place.size()).erase(0, 1);
        fs::create_directories(below);
        SampleDevice::write(below / "kept-too", "");
        EXPECT_EQ(runShell(device.open(resolution), kPurge), 0);
        EXPECT_TRUE(device.outsideIsUntouched());
        EXPECT_TRUE(fs::exists(below / "kept-too"));
        EXPECT_TRUE(fs::is_symlink(device.machine(place)));
      }
    }
  }
}

TEST(Shell, ALinkInsideTheRootIsFollowedAsOnTheDevice) {
  const SampleDevice device;
  device.link("/var", "/private/var");
  device.file("/private" + std::string(kKeyboards) + "/file", "");
  EXPECT_EQ(purge(device), 0);
  EXPECT_TRUE(fs::is_empty(device.machine("/private" + std::string(kKeyboards))));
}

TEST(Shell, TheNameOfTheRootMeansNothingToTheShell) {
  for (const std::string name : {"-rf root", "it's a \"root\"", "$(touch pwned)",
                                 "`touch pwned`; x", "*", "~", "new\nline", "back\\slash", "#"}) {
    SCOPED_TRACE(name);
    const SampleDevice device(name);
    device.file(kKeyboards + std::string("/file"), "");
    device.file("/pwner", "");
    EXPECT_EQ(purge(device), 0);
    EXPECT_TRUE(fs::is_empty(device.machine(kKeyboards)));
    EXPECT_EQ(*device.open().list("/"), std::vector<std::string>{"/pwner"});
    EXPECT_TRUE(device.outsideIsUntouched());
    EXPECT_FALSE(fs::exists("pwned"));
  }
}

TEST(Shell, NamesEachPathInsideTheRoot) {
  const SampleDevice device;
  const DeviceRoot root = device.open();
  device.file("/a b/file", "text");
  device.link("/link", "a b/file");
  device.link("/out", device.absoluteWayOut() + "/kept");
  device.link("/tree-out", device.absoluteWayOut());
  EXPECT_EQ(runShell(root, "cat '/a b/file' /link >/copy"), 0);
  EXPECT_EQ(*root.readFile("/copy", 100), "texttext");
  EXPECT_EQ(runShell(root, "cat <\"/a b/file\" >here"), 0);  // the shell starts in the root
  EXPECT_EQ(*root.readFile("/here", 100), "text");
  EXPECT_NE(runShell(root, "cat /out 2>/dev/null"), 0);
  EXPECT_NE(runShell(root, "echo x 2>/dev/null >/out"), 0);
  EXPECT_NE(runShell(root, "rm -rf / 2>/dev/null"), 0);
  EXPECT_NE(runShell(root, "rm -rf '/a b/..' 2>/dev/null"), 0);
  EXPECT_EQ(runShell(root, "rm -rf /tree-out/ /link /out /missing/file"), 0);
  EXPECT_EQ(*root.list("/"), (std::vector<std::string>{"/a b/file", "/copy", "/here"}));
  EXPECT_TRUE(device.outsideIsUntouched());
}

}  // namespace
}  // namespace host::files
