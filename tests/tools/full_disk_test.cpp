// Where there is no room, or nothing may be written, a command says so and leaves no half a file.

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "device_command.h"

namespace {

namespace fs = std::filesystem;

class FullDisk : public DeviceCommand {
 protected:
  FullDisk() {
    write("T.theme/theme.plist", colored("#FF0000FF"));
    fs::create_directories(folder() / "disk");
  }

  /// Commands in a process of its own in which `disk` is a small disk of its own; after `fill` it
  /// is as it should be. False where processes may not mount anything.
  bool canMount() const {
    return script("unshare -m mount -t tmpfs none disk 2>/dev/null").status == 0;
  }
  Outcome onDisk(const std::string& fill, const std::string& commands) const {
    return script(
        "exec 2>&1; unshare -m sh -c 'mount -t tmpfs -o size=64k none disk && mkdir disk/tmp && " +
        fill + " && " + commands + "'");
  }
};

TEST_F(FullDisk, APictureThatDoesNotFitIsNotWritten) {
  write("k.png", "old");
  const struct {
    const char* command;
    const char* says;
  } cases[] = {
      {"prismal render --quiet T.theme -o k.png", "prismal render: k.png: File too large\n"},
      {"prismal render --quiet T.theme --all all", "prismal render: all/"},
      {"prismal render --quiet T.theme -o new.png", "prismal render: new.png: File too large\n"},
      {"prismal convert T.theme/theme.plist -o k.png --to xml",
       "prismal convert: k.png: File too large\n"},
  };
  for (const auto& c : cases) {
    // In blocks of 512 bytes; the theme itself fits.
    const Outcome outcome = script("exec 2>&1; ulimit -f " +
                                   std::string(c.command[8] == 'c' ? "0" : "8") + "; " + c.command);
    EXPECT_EQ(outcome.status, 2) << c.command;
    EXPECT_TRUE(outcome.output.starts_with(c.says)) << c.command << ": " << outcome.output;
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1) << outcome.output;
  }
  EXPECT_EQ(read("k.png"), "old");
  EXPECT_EQ(script("ls; ls all").output, "T.theme\nall\ndisk\nk.png\n");
}

TEST_F(FullDisk, OfThisMachineIsToldAndLeftAlone) {
  if (!canMount()) GTEST_SKIP() << "nothing can be mounted here";
  const std::string full = "dd if=/dev/zero of=disk/filler bs=1k 2>/dev/null; true";
  const std::string readOnly = "mount -o remount,ro disk";
  const struct {
    std::string state;
    std::string command;
    std::string says;
  } cases[] = {
      {full, "prismal render --quiet T.theme -o disk/k.png",
       "prismal render: disk/k.png: No space left on device\n"},
      {readOnly, "prismal render --quiet T.theme -o disk/k.png",
       "prismal render: disk/k.png: Read-only file system\n"},
      {full, "TMPDIR=$PWD/disk/tmp prismal render --quiet T.theme -o k.png",
       "No space left on device\n"},
      {readOnly, "TMPDIR=$PWD/disk/tmp prismal render --quiet T.theme -o k.png",
       "Read-only file system\n"},
      {readOnly, "TMPDIR=$PWD/disk/tmp prismal check T.theme", "Read-only file system\n"},
      {full, "prismal install --device-root disk T.theme", "No space left on device\n"},
      {readOnly, "prismal install --device-root disk T.theme", "Read-only file system\n"},
      {readOnly, "prismal settings --device-root disk usePrismal off", "Read-only file system\n"},
      {readOnly, "prismal uninstall --device-root disk T", "Read-only file system\n"},
  };
  for (const auto& c : cases) {
    const Outcome outcome = onDisk(
        c.state,
        c.command +
            "; code=$?; find disk -type f ! -name filler ! -name .lock; ls disk/tmp; exit $code");
    EXPECT_EQ(outcome.status, 2) << c.command;
    EXPECT_TRUE(outcome.output.starts_with("prismal")) << c.command << ": " << outcome.output;
    EXPECT_TRUE(outcome.output.ends_with(c.says)) << c.command << ": " << outcome.output;
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1)
        << c.command << ": " << outcome.output;
  }
  EXPECT_FALSE(fs::exists(folder() / "k.png"));
}

TEST_F(FullDisk, ADeviceThatMayNotBeWrittenIsDrawnAllTheSame) {
  if (!canMount()) GTEST_SKIP() << "nothing can be mounted here";
  const Outcome outcome =
      onDisk("prismal install --device-root disk T.theme && mount -o remount,ro disk",
             "prismal render --quiet --device-root disk -o k.png");
  EXPECT_EQ(outcome.status, 0) << outcome.output;
  ASSERT_EQ(prismal("render --quiet T.theme -o expected.png").status, 0);
  EXPECT_EQ(read("k.png"), read("expected.png"));
}

}  // namespace
