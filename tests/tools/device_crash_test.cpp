// What a device is like after its writers were killed, ran out of room or came all at once.

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "device_command.h"
#include "host/images/encode.h"
#include "host/plist/description.h"
#include "host/plist/reader.h"

namespace {

namespace fs = std::filesystem;

/// Whether the process is about to change what is on the disk.
bool changesFiles(const __ptrace_syscall_info& info) {
  constexpr std::uint64_t kCalls[] = {SYS_write,     SYS_mkdirat, SYS_unlinkat, SYS_renameat,
                                      SYS_renameat2, SYS_fchmod,  SYS_fsync,    SYS_utimensat};
  if (info.op != PTRACE_SYSCALL_INFO_ENTRY) return false;
  if (info.entry.nr == SYS_openat) return (info.entry.args[2] & O_CREAT) != 0;
  return std::ranges::find(kCalls, info.entry.nr) != std::end(kCalls);
}

/// Whether this machine lets a process be followed by its parent, and it takes seconds: hundreds of
/// instrumented processes take minutes and show nothing that the others don't.
bool canTrace() {
#ifdef __SANITIZE_ADDRESS__
  return false;
#else
  const pid_t child = fork();
  if (child == 0) _exit(ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0 ? 0 : 1);
  int status = 1;
  return child > 0 && waitpid(child, &status, 0) == child && status == 0;
#endif
}

class DeviceCrash : public DeviceCommand {
 protected:
  DeviceCrash() {
    for (const std::string name : {"Old", "New"}) {
      write(name + "/A.theme/theme.plist",
            colored(name == "Old" ? "#FF0000FF" : "#00FF00FF", kImages));
      write(name + "/A.theme/p.png",
            host::images::encodePng(host::images::solid(3, 3, name == "Old", 2, 3, 255)));
    }
    write("B.theme/theme.plist", colored("#0000FFFF"));
  }

  static constexpr const char* kImages =
      "<key>BackgroundImages</key><dict><key>Portrait</key><string>p.png</string></dict>";

  /// Runs the command and kills it as it enters its `call`th system call that may change files.
  /// False when it came to its end before that, or can't be traced at all.
  bool runAndKill(std::vector<std::string> arguments, int call) const {
    const pid_t child = fork();
    if (child == 0) {
      ::setenv("XDG_DATA_HOME", folder().c_str(), 1);
      ::setenv("ASAN_OPTIONS", "detect_leaks=0",
               1);  // they can't be looked for in a traced process
      fs::current_path(folder());
      ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
      std::vector<char*> words = {const_cast<char*>(PRISMAL)};
      for (std::string& argument : arguments) words.push_back(argument.data());
      words.push_back(nullptr);
      ::execv(PRISMAL, words.data());
      ::_exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    for (int seen = 0; WIFSTOPPED(status);) {
      __ptrace_syscall_info info{};
      ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info);
      if (WSTOPSIG(status) == (SIGTRAP | 0x80) && changesFiles(info) && seen++ == call) {
        kill(child, SIGKILL);
      }
      ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
      waitpid(child, &status, 0);
    }
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
  }

  /// What the device is to be like, as far as a test cares.
  using Look = std::function<std::string()>;
  using Words = std::vector<std::string>;

  Look mergedTheme() const {
    return [this] { return readDevice(kMergedTheme); };
  }
  /// The settings, with what is in the pictures that they name.
  Look settings() const {
    return [this] {
      const auto list = host::plist::read(readDevice(kUserSettings)).list;
      std::string text = host::plist::describe(list.objectForKey("usePrismal"));
      for (const auto& style : list.objectForKey("backgroundImages").entries()) {
        for (const auto& picture : style.value.entries()) {
          const std::string path(picture.value.string().value_or(""));
          text.append(picture.key).append(path.empty() ? "none" : readDevice(path));
        }
      }
      return text;
    };
  }

  void restore() const {
    fs::remove_all(folder() / "prismal");
    fs::copy(folder() / "prepared", folder() / "prismal", fs::copy_options::recursive);
  }

  /// Kills `arguments` at every point, each time from the state that `prepare` makes. It must look
  /// as it looked before, or as it does when nobody kills; so it must after `next`, by which also
  /// all else has come to be as it was, or to be as it is when nobody kills.
  void killEverywhere(const Words& arguments, const std::string& prepare, const Look& look,
                      const Words& next) {
    ASSERT_EQ(script(prepare).status, 0);
    fs::rename(folder() / "prismal", folder() / "prepared");
    restore();
    const std::string before = look();
    const Words filesBefore = files();
    runAndKill(arguments, 1'000'000);
    const std::string after = look();
    const Words filesAfter = files();
    ASSERT_NE(before, after);
    int kills = 0;
    bool isNew = false;
    for (;; ++kills) {
      SCOPED_TRACE("kill " + std::to_string(kills));
      restore();
      if (!runAndKill(arguments, kills)) break;
      const std::string found = look();
      EXPECT_TRUE(found == before || found == after);
      // Once it is new it stays new.
      EXPECT_TRUE(found == after || !isNew);
      isNew = found == after;
      runAndKill(next, 1'000'000);
      EXPECT_TRUE(look() == after || (look() == before && !isNew && next != arguments));
      EXPECT_TRUE(files() == (look() == after ? filesAfter : filesBefore))
          << testing::PrintToString(files());
      if (HasFailure()) return;
    }
    EXPECT_GT(kills, 10) << "processes can't be traced here";
    EXPECT_TRUE(isNew);
  }

  /// A command that is refused, and nevertheless clears up.
  const Words kRefused = {"uninstall", "None"};
};

TEST_F(DeviceCrash, AnInstallKilledAnywhereLeavesTheMergedThemeWhole) {
  if (!canTrace()) GTEST_SKIP() << "processes can't be followed here";
  const Words install = {"install", "New/A.theme"};
  killEverywhere(install, "prismal install B.theme Old/A.theme", mergedTheme(), install);
}

TEST_F(DeviceCrash, AnyCommandFinishesAnInstallThatWasKilled) {
  if (!canTrace()) GTEST_SKIP() << "processes can't be followed here";
  // Pictures of other names, and a theme that was not there.
  write(
      "Renamed/A.theme/theme.plist",
      colored("#00FF00FF",
              "<key>BackgroundImages</key><dict><key>Portrait</key><string>q.png</string></dict>"));
  write("Renamed/A.theme/q.png", read("New/A.theme/p.png"));
  killEverywhere({"install", "Renamed/A.theme"}, "prismal install B.theme Old/A.theme",
                 mergedTheme(), kRefused);
  fs::remove_all(folder() / "prepared");
  fs::remove_all(folder() / "prismal");
  killEverywhere({"install", "New/A.theme"}, "prismal install B.theme", mergedTheme(), kRefused);
}

TEST_F(DeviceCrash, AnUninstallKilledAnywhereIsFinishedByTheNext) {
  if (!canTrace()) GTEST_SKIP() << "processes can't be followed here";
  const Words uninstall = {"uninstall", "A"};
  killEverywhere(uninstall, "prismal install B.theme Old/A.theme", mergedTheme(), uninstall);
}

TEST_F(DeviceCrash, AChangeOfSettingsKilledAnywhereLeavesThemWhole) {
  if (!canTrace()) GTEST_SKIP() << "processes can't be followed here";
  fs::rename(folder() / "New/A.theme/p.png", folder() / "new.png");
  const std::string portrait = "settings background iPad-Alert Portrait ";
  const std::string prepare = "prismal " + portrait + "Old/A.theme/p.png";
  const Words choose = {"settings", "background", "iPad-Alert", "Portrait", "new.png"};
  killEverywhere(choose, prepare, settings(), kRefused);
  fs::remove_all(folder() / "prepared");
  fs::remove_all(folder() / "prismal");
  killEverywhere({"settings", "background", "iPad-Alert", "Portrait", "--remove"}, prepare,
                 settings(), kRefused);
}

TEST_F(DeviceCrash, WithoutRoomNothingChanges) {
  // What a full disk does to a write, a limit on the size of files does as well.
  write("Large.theme/theme.plist", colored("#0000FFFF", kImages));
  write("Large.theme/p.png", std::string(40'000, 'x'));
  std::string colors;
  for (int i = 0; i < 1000; ++i) {
    colors += "<array><string>A name of its own " + std::to_string(i) +
              "</string><string>#00000000</string></array>";
  }
  write("Many.theme/theme.plist",
        "<dict><key>CustomColor</key><array>" + colors + "</array></dict>");
  ASSERT_EQ(prismal("install Old/A.theme").status, 0);
  ASSERT_EQ(prismal("settings usePrismal off").status, 0);
  const auto before = files();
  const std::string theme = readDevice(kMergedTheme);
  const std::string settings = readDevice(kUserSettings);
  struct Case {
    std::string limit;  // in blocks of 512 bytes
    std::string arguments;
    std::string says;
  };
  const Case cases[] = {
      {"60", "install New/A.theme Large.theme", "Staged/Large/p.png: File too large"},
      {"1", "install New/A.theme Many.theme", "Staged/Many/theme.plist: File too large"},
      {"0", "uninstall A", "installed.plist: File too large"},
      {"0", "settings usePrismal on", "net.quillon.prismal.plist: File too large"},
      {"0", "settings background iPad-Split Portrait New/A.theme/p.png", "File too large"},
  };
  for (const Case& c : cases) {
    const Outcome outcome =
        script("ulimit -f " + c.limit + "; exec '" PRISMAL "' " + c.arguments + " 2>&1");
    EXPECT_EQ(outcome.status, 2) << c.arguments;
    EXPECT_NE(outcome.output.find(c.says), std::string::npos) << c.arguments << outcome.output;
    EXPECT_EQ(readDevice(kMergedTheme), theme) << c.arguments;
    EXPECT_EQ(readDevice(kUserSettings), settings) << c.arguments;
    EXPECT_EQ(files(), before) << c.arguments;
  }
}

TEST_F(DeviceCrash, ManyInstallsAtOnceAllGoIn) {
  constexpr int kThemes = 8;
  for (int i = 0; i < kThemes; ++i) {
    write("T" + std::to_string(i) + ".theme/theme.plist", colored("#00FF00FF"));
  }
  std::vector<std::thread> installs;
  installs.reserve(kThemes);
  std::array<int, kThemes> statuses{};
  for (int i = 0; i < kThemes; ++i) {
    installs.emplace_back([&, i] {
      const auto at = static_cast<std::size_t>(i);
      statuses[at] = prismal("install T" + std::to_string(i) + ".theme").status;
    });
  }
  for (auto& install : installs) install.join();
  EXPECT_EQ(statuses, (std::array<int, kThemes>{}));
  const auto list = nlohmann::json::parse(prismal("list --json").output);
  EXPECT_EQ(list["themes"].size(), std::size_t{kThemes});
  EXPECT_EQ(drawn().at(10, 60), 0xff00ff00U);
}

TEST_F(DeviceCrash, AnInterruptedInstallLeavesNothingOfItself) {
  ASSERT_EQ(prismal("install Old/A.theme").status, 0);
  const auto before = files();
  const std::string theme = readDevice(kMergedTheme);
  // It waits for the lock when the signal comes.
  const Outcome outcome =
      script("exec 9>prismal/device/var/mobile/Library/Prismal/.lock; flock 9; '" PRISMAL
             "' install New/A.theme 9>&- & sleep 0.2; kill -TERM $!; wait $!");
  EXPECT_EQ(outcome.status, 128 + SIGTERM);
  EXPECT_EQ(files(), before);
  EXPECT_EQ(readDevice(kMergedTheme), theme);
}

}  // namespace
