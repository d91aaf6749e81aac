// A change of a device of which any call fails is made or given up, as a whole, and says so.

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

#include "device/change_themes.h"
#include "device/report.h"
#include "exit_status.h"
#include "fault_points.h"
#include "host/files/device_root.h"
#include "host/files/temporary_directory.h"
#include "host/images/encode.h"
#include "theme/theme_source.h"

namespace tests {
namespace {

namespace fs = std::filesystem;
using tools::device::ThemeStore;

constexpr const char* kMerged =
    "/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist";

std::string bytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

#ifdef __SANITIZE_ADDRESS__
// Each process looks for leaks, which takes a second where many tests run.
constexpr unsigned kCallsApart = 11;
constexpr unsigned kAllocationsApart = 301;
#else
constexpr unsigned kCallsApart = 1;
constexpr unsigned kAllocationsApart = 23;  // of some thousand
#endif

class DeviceFaults : public testing::Test {
 protected:
  DeviceFaults() {
    writeTheme("Old", "A", "#FF0000FF");
    writeTheme("New", "A", "#00FF00FF");
    EXPECT_EQ(install("Old/A.theme"), tools::kDone);
    fs::copy(device(), at("before"), fs::copy_options::recursive);
    old_ = bytesOf(device() + kMerged);
    EXPECT_EQ(install("New/A.theme"), tools::kDone);
    new_ = bytesOf(device() + kMerged);
    EXPECT_NE(old_, new_);
    files_ = files();
    restore();
  }

  fs::path at(const std::string& name) const { return directory_.path() / name; }
  std::string device() const { return at("device"); }

  void writeTheme(const std::string& folder, const std::string& name, const std::string& color) {
    const fs::path theme = at(folder) / (name + ".theme");
    fs::create_directories(theme);
    std::ofstream(theme / "theme.plist")
        << "<dict><key>CustomColor</key><array><array><string>c</string><string>" << color
        << "</string></array></array><key>BackgroundImages</key><dict><key>Portrait</key>"
           "<string>p.png</string></dict></dict>";
    std::ofstream(theme / "p.png")
        << host::images::encodePng(host::images::solid(3, 3, color[1] == 'F', 2, 3, 255));
  }

  int install(const std::string& theme) const {
    auto source = tools::theme::ThemeSource::read(at(theme));
    if (!source) return tools::device::refuse("install", source.reason());
    return tools::device::changeThemes(
        "install", device(), host::files::DeviceRoot::Creation::kIfMissing,
        [&](ThemeStore& store) -> host::files::Result<host::files::Done> {
          const auto missing = store.install(*source);
          if (!missing) return missing.failure();
          return host::files::Done();
        });
  }

  void restore() const {
    fs::remove_all(device());
    fs::copy(at("before"), device(), fs::copy_options::recursive);
  }

  /// All that there is but for what tells processes of changes.
  std::vector<std::string> files() const {
    std::vector<std::string> all;
    for (const auto& entry : fs::recursive_directory_iterator(device() + "/var/mobile")) {
      all.push_back(entry.path().lexically_relative(device()).string());
    }
    std::ranges::sort(all);
    return all;
  }

  /// Installs the new theme and keeps what is said.
  void work() {
    status_ = tools::kTrouble;
    const int said = ::open(at("said").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    ::dup2(said, STDERR_FILENO);
    status_ = install("New/A.theme");
  }

  /// Whether the call, which failed, may have been one of clearing up.
  static bool clearsUp(const Call& call) {
    constexpr std::string_view kOwnFolder = "/var/mobile/Library/Prismal";
    // What the lists there name decides what of an older version goes.
    constexpr std::string_view kLists = "/var/mobile/Library/Preferences";
    return call.isAllocation() || call.file.starts_with(kLists) ||
           call.name == std::string_view("unlinkat") || call.file == kOwnFolder ||
           call.file == std::string(kOwnFolder) + "/" ||
           call.file.starts_with(std::string(kOwnFolder) + "/Staged");
  }

  /// What is wrong after it.
  std::string judge(const Call& call, const std::string& reason) const {
    const std::string said = bytesOf(at("said"));
    const std::string merged = bytesOf(device() + kMerged);
    std::string wrong;
    if (merged != old_ && merged != new_) wrong += "the merged theme is neither old nor new; ";
    if (status_ == tools::kDone && merged != new_) wrong += "done, and the theme is not there; ";
    const bool isOneLine = std::ranges::count(said, '\n') == 1;
    // Out of memory, the program says so in its main function.
    const bool tells = call.isAllocation() || (said.starts_with("prismal install: ") && isOneLine &&
                                               said.find(reason) != std::string::npos);
    if (status_ != tools::kDone && !tells) wrong += "it says: " + said;
    // A picture of the theme that can't be read is not there, as a missing one.
    if (!std::ranges::includes(files_, files()) && !clearsUp(call)) {
      wrong += "something is left behind; ";
    }
    if (install("New/A.theme") != tools::kDone || files() != files_) {
      wrong += "the next change does not clear up; ";
    }
    return wrong.empty() ? "" : std::string(call.name) + " of " + call.file + " failed: " + wrong;
  }

  std::string judge(const Call& call) const { return judge(call, ""); }

  std::string old_;
  std::string new_;
  std::vector<std::string> files_;
  int status_ = 0;

 private:
  host::files::TemporaryDirectory directory_;
};

TEST_F(DeviceFaults, AnInstallWithAnyCallFailingIsWholeOrNone) {
  for (const int error : {0, ENOSPC, EROFS}) {
    const FaultRun run{.device = device(), .systemCalls = true, .errorOfChanges = error};
    unsigned nth = 0;
    for (;; nth += kCallsApart) {
      restore();
      const auto wrong = failNth(
          run, nth, [&] { work(); }, [&](const Call& call) { return judge(call); });
      if (!wrong) break;
      EXPECT_EQ(*wrong, "") << nth << bytesOf(at("said"));
    }
    EXPECT_GT(nth, 60U);
  }
}

TEST_F(DeviceFaults, AnInstallWithoutMemoryIsWholeOrNone) {
  const FaultRun run{.device = device(), .allocations = true};
  unsigned nth = 0;
  for (;; nth += kAllocationsApart) {
    restore();
    const auto wrong = failNth(
        run, nth, [&] { work(); }, [&](const Call& call) { return judge(call); });
    if (!wrong) break;
    EXPECT_EQ(*wrong, "") << nth;
  }
  EXPECT_GT(nth, 200U);
}

TEST_F(DeviceFaults, OfADeviceThatCannotBeChangedNothingChanges) {
  const struct {
    int error;
    const char* reason;
  } cases[] = {{EROFS, "Read-only file system"}, {ENOSPC, "No space left on device"}};
  for (const auto& c : cases) {
    restore();
    const auto before = files();
    const FaultRun run{.device = device(), .systemCalls = true, .errorOfChanges = c.error};
    const std::string wrong = failChanges(
        run, [&] { work(); },
        [&](const Call& call) {
          if (status_ != tools::kTrouble) return std::string("it was done");
          return bytesOf(device() + kMerged) == old_ ? judge(call, c.reason)
                                                     : "the theme has changed";
        });
    EXPECT_EQ(wrong, "") << bytesOf(at("said"));
    EXPECT_EQ(files(), before);
  }
}

}  // namespace
}  // namespace tests
