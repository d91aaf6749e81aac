// A theme that is drawn anew whenever it is saved.

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "device_command.h"
#include "host/images/encode.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class Watch : public DeviceCommand {
 protected:
  Watch() {
    save("#FF0000FF");
    write("T.theme/p.png", png(0, 0, 255));
  }
  ~Watch() override {
    if (watcher_ > 0) end(SIGKILL);
  }

  static std::string png(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return host::images::encodePng(host::images::solid(2, 2, red, green, blue, 255));
  }
  static std::string list(const std::string& color) {
    return colored(color,
                   "<key>BackgroundImages</key><dict><key>Portrait</key><string>p.png</string>"
                   "</dict>");
  }
  void save(const std::string& color) const { write("T.theme/theme.plist", list(color)); }

  void start() {
    fs::create_directories(folder() / "tmp");
    watcher_ = fork();
    if (watcher_ == 0) {
      fs::current_path(folder());
      ::setenv("TMPDIR", (folder() / "tmp").c_str(), 1);
      for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
        ::dup2(::open("said", O_WRONLY | O_CREAT | O_APPEND, 0644), stream);
      }
      ::execl(PRISMAL, PRISMAL, "watch", "T.theme", "-o", "T.theme/out.png", nullptr);
      ::_exit(127);
    }
  }
  /// The exit status; -1 of one that died.
  int end(int signal) {
    kill(watcher_, signal);
    int status = 0;
    waitpid(watcher_, &status, 0);
    watcher_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  std::ptrdiff_t drawings() const {
    const std::string said = read("said");
    std::ptrdiff_t count = 0;
    for (auto at = said.find("drawn in"); at != said.npos; at = said.find("drawn in", at + 1))
      ++count;
    return count;
  }
  /// Waits until so many have been made, and no more come for a while.
  bool settlesAt(std::ptrdiff_t count) const {
    for (int tries = 0; tries < 1000 && drawings() < count; ++tries)
      std::this_thread::sleep_for(10ms);
    std::this_thread::sleep_for(300ms);
    return drawings() == count;
  }
  bool says(const std::string& text) const {
    for (int tries = 0; tries < 1000; ++tries) {
      if (read("said").find(text) != std::string::npos) return true;
      std::this_thread::sleep_for(10ms);
    }
    return false;
  }
  unsigned key() const { return picture("T.theme/out.png").at(10, 60); }
  unsigned behind() const { return picture("T.theme/out.png").at(0, 0); }

 private:
  pid_t watcher_ = 0;
};

TEST_F(Watch, EverySaveIsDrawnOnce) {
  start();
  ASSERT_TRUE(settlesAt(1)) << read("said");
  EXPECT_EQ(key(), 0xffff0000U);

  save("#00FF00FF");
  ASSERT_TRUE(settlesAt(2)) << read("said");
  EXPECT_EQ(key(), 0xff00ff00U);

  write("T.theme/new", list("#0000FFFF"));
  fs::rename(folder() / "T.theme/new", folder() / "T.theme/theme.plist");
  ASSERT_TRUE(settlesAt(3)) << read("said");
  EXPECT_EQ(key(), 0xff0000ffU);

  write("T.theme/p.png", png(0, 255, 0));
  ASSERT_TRUE(settlesAt(4)) << read("said");
  EXPECT_EQ(behind(), 0xff00ff00U);

  write("T.theme/p@2x.png", png(255, 0, 0));
  ASSERT_TRUE(settlesAt(5)) << read("said");
  EXPECT_EQ(behind(), 0xffff0000U);

  write("T.theme/notes.txt", "nothing that is drawn");
  EXPECT_TRUE(settlesAt(5)) << read("said");
  EXPECT_EQ(end(SIGINT), 0);
}

TEST_F(Watch, ABurstOfSavesIsOneDrawing) {
  start();
  ASSERT_TRUE(settlesAt(1)) << read("said");
  for (int i = 0; i < 20; ++i) save(i == 19 ? "#00FF00FF" : "#0000FFFF");
  write("T.theme/p.png", png(0, 255, 0));
  ASSERT_TRUE(settlesAt(2)) << read("said");
  EXPECT_EQ(key(), 0xff00ff00U);
  EXPECT_EQ(behind(), 0xff00ff00U);
}

TEST_F(Watch, ABrokenThemeKeepsTheLastPicture) {
  start();
  ASSERT_TRUE(settlesAt(1)) << read("said");
  write("T.theme/theme.plist", "<dict><key>a</key></dict>");
  EXPECT_TRUE(
      says("prismal watch: T.theme/theme.plist: line 1, column 7: <key> without a value\n"));
  EXPECT_EQ(key(), 0xffff0000U);
  fs::remove(folder() / "T.theme/theme.plist");
  EXPECT_TRUE(
      says("prismal watch: T.theme: a theme folder has a theme.plist, this one has none\n"));
  EXPECT_EQ(key(), 0xffff0000U);
  save("#00FF00FF");
  ASSERT_TRUE(settlesAt(2)) << read("said");
  EXPECT_EQ(key(), 0xff00ff00U);
}

TEST_F(Watch, AFolderThatIsReplacedIsWatchedAgain) {
  start();
  ASSERT_TRUE(settlesAt(1)) << read("said");
  fs::rename(folder() / "T.theme", folder() / "Away");
  write("Other/theme.plist", list("#00FF00FF"));
  write("Other/p.png", png(0, 0, 255));
  fs::rename(folder() / "Other", folder() / "T.theme");
  ASSERT_TRUE(settlesAt(2)) << read("said");
  EXPECT_EQ(key(), 0xff00ff00U);
  write("Away/theme.plist", list("#FF0000FF"));
  EXPECT_TRUE(settlesAt(2)) << read("said");
  save("#0000FFFF");
  ASSERT_TRUE(settlesAt(3)) << read("said");
  EXPECT_EQ(key(), 0xff0000ffU);
}

TEST_F(Watch, EndsAtOnceAndLeavesNothingBehind) {
  for (const int signal : {SIGINT, SIGTERM}) {
    start();
    while (drawings() == 0) std::this_thread::sleep_for(1ms);
    save("#00FF00FF");
    std::this_thread::sleep_for(20ms);  // into the next drawing
    EXPECT_EQ(end(signal), 0);
    EXPECT_TRUE(fs::is_empty(folder() / "tmp"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder() / "T.theme"), {}), 3);
    fs::remove(folder() / "said");
  }
}

TEST_F(Watch, WritesToNothingBesideItsPicture) {
  write("others.txt", "others");
  fs::create_symlink(folder() / "others.txt", folder() / "T.theme/out.png.next");
  start();
  ASSERT_TRUE(settlesAt(1)) << read("said");
  EXPECT_EQ(end(SIGINT), 0);
  EXPECT_EQ(read("others.txt"), "others");
  EXPECT_EQ(key(), 0xffff0000U);
}

TEST_F(Watch, RefusesWhatCanNeverBeDrawn) {
  for (const char* arguments :
       {"None.theme -o x.png", "T.theme", "T.theme -o -", "T.theme -o none/x.png"}) {
    const Outcome outcome = prismal(std::string("watch ") + arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 1) << outcome.output;
  }
}

}  // namespace
