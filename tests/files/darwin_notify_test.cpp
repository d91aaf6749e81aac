#include "host/files/darwin_notify.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

#include "sample_device.h"

namespace host::files {
namespace {

namespace fs = std::filesystem;

class DarwinNotify : public testing::Test {
 protected:
  // A callback that notes that it was called.
  auto note(const std::string& text) {
    return [this, text] { heard_ += text; };
  }
  std::string heardNow() {
    loop_.drain();
    return std::exchange(heard_, {});
  }
  void post(std::string_view name) { EXPECT_TRUE(postNotification(root_, name)); }
  bool postFromAnotherProcess(const char* name) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(postNotification(root_, name) ? 0 : 1);
    int status = -1;
    return ::waitpid(child, &status, 0) == child && status == 0;
  }

  SampleDevice device_;
  DeviceRoot root_ = device_.open();
  RunLoop loop_;
  std::string heard_;
  NotificationWatcher watcher_{root_, loop_};
};

TEST_F(DarwinNotify, ReachesObserversInOrderOfRegistration) {
  const auto first = watcher_.observe("b", note("1"));
  const auto second = watcher_.observe("a", note("2"));
  const auto third = watcher_.observe("b", note("3"));
  post("b");
  EXPECT_EQ(heard_, "") << "only the run loop delivers";
  EXPECT_EQ(heardNow(), "13");
  post("a");
  post("b");
  EXPECT_EQ(heardNow(), "213");
  post("nobody");
  EXPECT_EQ(heardNow(), "");
}

TEST_F(DarwinNotify, ReachesOtherProcesses) {
  const auto token = watcher_.observe("name/with slash", note("x"));
  ASSERT_TRUE(postFromAnotherProcess("name/with slash"));
  ASSERT_TRUE(postFromAnotherProcess("name"));
  EXPECT_EQ(heardNow(), "x");
  ASSERT_TRUE(postFromAnotherProcess("name/with slash"));
  EXPECT_EQ(heardNow(), "x");
}

TEST_F(DarwinNotify, SeveralPostsAreOneDelivery) {
  const auto token = watcher_.observe("name", note("x"));
  const auto other = watcher_.observe("other", note("y"));
  for (int i = 0; i < 100; ++i) post(i % 2 == 0 ? "name" : "other");
  EXPECT_EQ(heardNow(), "xy");
}

TEST_F(DarwinNotify, APostCountsFromTheMomentOfObserving) {
  post("name");
  const auto first = watcher_.observe("name", note("1"));
  EXPECT_EQ(heardNow(), "");
  post("name");
  const auto second = watcher_.observe("name", note("2"));
  EXPECT_EQ(heardNow(), "1");
  post("name");
  const auto third = watcher_.observe("name", note("3"));
  post("name");
  EXPECT_EQ(heardNow(), "123");
}

bool watchesAnything() {
  return std::ranges::any_of(fs::directory_iterator("/proc/self/fd"), [](const auto& entry) {
    std::error_code gone;
    return fs::read_symlink(entry, gone) == "anon_inode:inotify";
  });
}

TEST_F(DarwinNotify, NothingIsWatchedBeforeTheRunLoopComesRound) {
  post("name");
  ::usleep(20'000);  // the kernel's clock moves on
  const auto first = watcher_.observe("name", note("1"));
  const auto other = watcher_.observe("other", note("o"));
  EXPECT_FALSE(watchesAnything());
  post("other");
  post("name");
  const auto second = watcher_.observe("name", note("2"));
  EXPECT_EQ(heardNow(), "o1") << "not what was posted before each observation";
  EXPECT_TRUE(watchesAnything());
  post("name");
  EXPECT_EQ(heardNow(), "12");
}

TEST_F(DarwinNotify, ACallbackMayObservePostAndLetGo) {
  std::vector<NotificationWatcher::Token> tokens(3);
  tokens[0] = watcher_.observe("name", [&] {
    heard_ += '1';
    tokens[1] = nullptr;
    if (!tokens[2])
      tokens[2] = watcher_.observe("name", note("3"));
    else
      return;
    post("name");
  });
  tokens[1] = watcher_.observe("name", note("2"));
  post("name");
  EXPECT_EQ(heardNow(), "113");
}

TEST_F(DarwinNotify, NothingIsDeliveredWithoutTokenOrWatcher) {
  auto watcher = std::make_optional<NotificationWatcher>(root_, loop_);
  const auto kept = watcher->observe("name", [&] { watcher.reset(), heard_ += '1'; });
  const auto after = watcher->observe("name", note("2"));
  { const auto dropped = watcher->observe("name", note("3")); }
  post("name");
  EXPECT_EQ(heardNow(), "1");
  post("name");
  EXPECT_EQ(heardNow(), "");
}

TEST_F(DarwinNotify, SurvivesTheRemovalOfItsDirectory) {
  const auto token = watcher_.observe("name", note("x"));
  const auto other = watcher_.observe("other", note("y"));
  for (const char* removed : {"/var/run/notify", "/var", "/"}) {
    SCOPED_TRACE(removed);
    post("name");
    EXPECT_EQ(heardNow(), "x");
    ASSERT_TRUE(root_.remove(removed));
    EXPECT_EQ(heardNow(), "");
    post("other");
    EXPECT_EQ(heardNow(), "y");
    // Made anew by the post itself, before the run loop comes round.
    ASSERT_TRUE(root_.remove(removed));
    post("name");
    EXPECT_EQ(heardNow(), "x");
  }
}

TEST_F(DarwinNotify, WaitsWhileSomethingElseStandsInItsPlace) {
  const auto token = watcher_.observe("name", note("x"));
  for (const std::string place : {"/var/run/notify", "/var/run", "/var"}) {
    SCOPED_TRACE(place);
    fs::remove_all(device_.machine(place));
    device_.file(place, "not a directory");
    EXPECT_FALSE(postNotification(root_, "name"));
    EXPECT_EQ(heardNow(), "");
    fs::remove(device_.machine(place));
    post("name");
    EXPECT_EQ(heardNow(), "x");
    post("name");
    EXPECT_EQ(heardNow(), "x");
  }
}

TEST_F(DarwinNotify, SurvivesItsDirectoryBeingMovedAway) {
  const auto token = watcher_.observe("name", note("x"));
  fs::rename(device_.machine("/var/run/notify"), device_.machine("/moved"));
  post("name");
  EXPECT_EQ(heardNow(), "x");
  SampleDevice::write(device_.machine("/moved/name"), "");
  EXPECT_EQ(heardNow(), "");
  post("name");
  EXPECT_EQ(heardNow(), "x");
}

TEST_F(DarwinNotify, AnOverflowCountsAsAPostOfEveryName) {
  const auto token = watcher_.observe("name", note("x"));
  const auto other = watcher_.observe("other", note("y"));
  EXPECT_EQ(heardNow(), "");  // watches from now on
  int limit = std::stoi(SampleDevice::read("/proc/sys/fs/inotify/max_queued_events"));
  if (limit > 100'000) GTEST_SKIP() << "the queue is too long to fill";
  // Alternating, because the kernel drops an event that repeats the last.
  for (; limit >= 0; --limit) post(limit % 2 == 0 ? "this" : "that");
  EXPECT_EQ(heardNow(), "xy");
  post("other");
  EXPECT_EQ(heardNow(), "y");
}

TEST_F(DarwinNotify, NothingPlantedInItsPlaceHoldsItUpOrLeadsOutside) {
  const auto directory = fs::path("/var/run/notify");
  device_.pipe("/pipe");
  device_.link("/var/run/notify/link", device_.absoluteWayOut() + "/made");
  device_.directory("/var/run/notify/directory");
  fs::rename(device_.machine("/pipe"), device_.machine("/var/run/notify/pipe"));
  for (const char* name : {"link", "directory", "pipe"}) {
    const auto token = watcher_.observe(name, note("x"));
    post(name);
    EXPECT_EQ(heardNow(), "x") << name;
  }
  EXPECT_FALSE(fs::exists(device_.outside() / "made"));
}

TEST_F(DarwinNotify, ADirectoryThatLeadsOutsideIsNeverUsed) {
  device_.link("/var/run/notify", device_.relativeWayOut());
  EXPECT_FALSE(postNotification(root_, "name"));
  const auto token = watcher_.observe("name", note("x"));
  EXPECT_FALSE(fs::exists(device_.outside() / "name"));
  SampleDevice::write(device_.outside() / "name", "");
  EXPECT_EQ(heardNow(), "");
  fs::remove(device_.machine("/var/run/notify"));
  post("name");
  EXPECT_EQ(heardNow(), "x");
}

TEST_F(DarwinNotify, ANameWithoutAFileIsRefused) {
  for (const std::string& name : {std::string(), std::string(300, 'n')}) {
    EXPECT_FALSE(postNotification(root_, name));
    EXPECT_EQ(watcher_.observe(name, note("x")), nullptr);
  }
}

}  // namespace
}  // namespace host::files
