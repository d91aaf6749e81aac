// A host in which every call that can fail does so in turn goes on, and shows its keyboard as if
// the piece that the call was for were missing.

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "fault_points.h"
#include "host/files/temporary_directory.h"
#include "host_session.h"

namespace tests {
namespace {

namespace fs = std::filesystem;

#ifdef __SANITIZE_ADDRESS__
// Each copy looks for leaks, which takes a second where many tests run.
constexpr unsigned kCallsApart = 3;
constexpr unsigned kAllocationsApart = 12;
#else
constexpr unsigned kCallsApart = 1;
constexpr unsigned kAllocationsApart = 1;
#endif

/// What the keyboards look like on a device without some of its files.
struct Look {
  std::string_view without;
  std::vector<std::string> files;
  std::size_t hash = 0;
};

bool isAmong(const std::vector<Look>& looks, std::size_t hash) {
  return std::ranges::find(looks, hash, &Look::hash) != looks.end();
}

const Look* lookOf(const std::vector<Look>& looks, std::string_view without) {
  return &*std::ranges::find(looks, without, &Look::without);
}

class HostFaults : public testing::Test {
 protected:
  HostFaults() { makeDevice(device()); }

  std::string device() const { return (directory_.path() / "device").string(); }

  /// What a process shows on the device as it is.
  std::size_t lookNow(bool withLibrary = true) const {
    int ends[2];
    if (pipe(ends) != 0) return 0;
    const pid_t child = fork();
    if (child == 0) {
      HostSession session(device());
      if (withLibrary) session.loadLibrary();
      const std::size_t hash = hashOf(session.draw());
      const bool isTold = ::write(ends[1], &hash, sizeof hash) > 0;
      _exit(isTold ? 0 : 1);
    }
    close(ends[1]);
    std::size_t hash = 0;
    EXPECT_EQ(::read(ends[0], &hash, sizeof hash), static_cast<ssize_t>(sizeof hash));
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return hash;
  }

  std::size_t lookWithout(const std::vector<std::string>& files) const {
    for (const auto& file : files) fs::remove(device() + file);
    const std::size_t hash = lookNow();
    makeDevice(device());
    return hash;
  }

  /// Every look that a device of fewer files has.
  std::vector<Look> looks() const {
    std::vector<Look> all = {{"nothing", {}},
                             {"its theme", {kTheme}},
                             {"its settings", {kSettings}},
                             {"any settings", {kSettings, kDefaultSettings}},
                             {"its sharp picture", {kSibling}},
                             {"its pictures", {kPicture, kSibling}},
                             {"its photograph", {kPhotograph}}};
    for (Look& look : all) look.hash = lookWithout(look.files);
    all.push_back({"the library", {}, lookNow(false)});
    return all;
  }

 private:
  host::files::TemporaryDirectory directory_;
};

TEST_F(HostFaults, EveryPieceShows) {
  const auto all = looks();
  for (const Look& look : all) {
    EXPECT_NE(look.hash, hashOf({}));
    // The photograph is all that the settings choose, but for what they say that nobody else does.
    const bool isAsAnother = look.hash == lookOf(all, "its photograph")->hash;
    EXPECT_EQ(std::ranges::count(all, look.hash, &Look::hash), isAsAnother ? 2 : 1) << look.without;
  }
}

/// Draws, and draws again with nothing in its way.
class Drawn {
 public:
  explicit Drawn(std::string device) : device_(std::move(device)) {}

  void start() {
    const Unharmed unharmed;
    session_.emplace(device_);
  }
  void load() { session_->loadLibrary(); }
  void draw() { first = hashOf(session_->draw()); }
  std::size_t drawAgain() { return hashOf(session_->draw()); }

  std::size_t first = 0;

 private:
  std::string device_;
  std::optional<HostSession> session_;
};

TEST_F(HostFaults, AFileThatCannotBeReadIsAsGoodAsMissing) {
  const auto all = looks();
  // A sharper sibling that is there is asked for and no other: see what a theme's pictures are.
  const struct {
    std::string_view file;
    std::vector<std::string_view> without;
  } expectations[] = {{kTheme, {"its theme"}},
                      {kSettings, {"its settings"}},
                      {kSibling, {"its sharp picture", "its pictures"}},
                      {kPhotograph, {"its photograph"}}};
  Drawn drawn(device());
  const auto work = [&] {
    drawn.start();
    drawn.load();
    drawn.draw();
  };
  const auto judge = [&](const Call& call) -> std::string {
    for (const auto& expected : expectations) {
      if (expected.file != call.file) continue;
      const bool fits = std::ranges::any_of(expected.without, [&](std::string_view without) {
        return drawn.first == lookOf(all, without)->hash;
      });
      if (!fits && drawn.first != lookOf(all, "nothing")->hash) {
        return call.file + " can't be read, and the keyboard is not as without it";
      }
    }
    return isAmong(all, drawn.drawAgain()) ? "" : "the second keyboard is not whole";
  };
  const auto count =
      failInTurn({.device = device(), .systemCalls = true, .oneOf = kCallsApart}, work, judge);
  EXPECT_GT(count.calls, 30 / kCallsApart);
  EXPECT_EQ(count.faults, 0U);
}

TEST_F(HostFaults, WithoutMemoryForAPieceTheKeyboardComesWithoutIt) {
  const auto all = looks();
  Drawn drawn(device());
  const auto work = [&] {
    drawn.start();
    {
      const Unharmed unharmed;
      drawn.load();
    }
    drawn.draw();
  };
  const auto judge = [&](const Call&) -> std::string {
    return isAmong(all, drawn.drawAgain()) ? "" : "the second keyboard is not whole";
  };
  const auto count = failInTurn(
      {.device = device(), .allocations = true, .oneOf = kAllocationsApart}, work, judge);
  EXPECT_GT(count.calls, 100 / kAllocationsApart);
  EXPECT_EQ(count.faults, 0U);
}

TEST_F(HostFaults, WithoutMemoryToLoadTheLibraryThereIsAKeyboard) {
  Drawn drawn(device());
  const auto work = [&] {
    drawn.start();
    drawn.load();
  };
  // With some of the hooks it may look like anything between with and without the library.
  const std::size_t none = hashOf({host::images::Bitmap(), host::images::Bitmap()});
  const auto judge = [&](const Call&) -> std::string {
    const std::size_t first = drawn.drawAgain();
    if (first == none) return "there is no keyboard";
    return drawn.drawAgain() == first ? "" : "the second keyboard is another one";
  };
  const auto count = failInTurn(
      {.device = device(), .allocations = true, .oneOf = kAllocationsApart}, work, judge);
  EXPECT_GT(count.calls, 20 / kAllocationsApart);
  EXPECT_EQ(count.faults, 0U);
}

}  // namespace
}  // namespace tests
