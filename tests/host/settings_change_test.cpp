// What the command changes on a device reaches the programs that run there.

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "host/files/temporary_directory.h"

namespace {

namespace fs = std::filesystem;

/// A running program, which ends with this object.
class WaitingHost {
 public:
  explicit WaitingHost(const fs::path& device) {
    std::array<int, 2> input{};
    EXPECT_EQ(::pipe(input.data()), 0);
    // Through its own copy the shell's child reads; ours keeps it going.
    const std::string command = "exec '" WAITING_HOST "' '" + device.string() +
                                "' '" PRISMAL_LIBRARY "' <&" + std::to_string(input[0]) + " " +
                                std::to_string(input[1]) + ">&-";
    output_ = ::popen(command.c_str(), "r");
    ::close(input[0]);
    input_ = input[1];
  }
  WaitingHost(const WaitingHost&) = delete;
  WaitingHost& operator=(const WaitingHost&) = delete;
  ~WaitingHost() {
    ::close(input_);
    EXPECT_EQ(::pclose(output_), 0);
  }

  /// The next line that it prints; waits for it.
  std::string line() {
    std::array<char, 1000> buffer{};
    if (std::fgets(buffer.data(), buffer.size(), output_) == nullptr) return "(it has ended)";
    std::string text = buffer.data();
    text.pop_back();
    return text;
  }

 private:
  FILE* output_;
  int input_;
};

TEST(SettingsChange, ReachesARunningProgramAtOnce) {
  const host::files::TemporaryDirectory directory;
  const fs::path device = directory.path() / "device";
  const auto prismal = [&](const std::string& arguments) {
    const std::string command =
        "'" PRISMAL "' " + arguments + " --device-root '" + device.string() + "'";
    return std::system(command.c_str());
  };
  std::ofstream(directory.path() / "Red.plist")
      << "<dict><key>CustomColor</key><array><array><string>UIKBColorKeyLetter</string>"
         "<string>#FF0000FF</string></array></array></dict>";
  ASSERT_EQ(prismal("install '" + (directory.path() / "Red.plist").string() + "'"), 0);

  WaitingHost running(device);
  EXPECT_EQ(running.line(), "shown 255,0,0");
  ASSERT_EQ(prismal("settings usePrismal off"), 0);
  EXPECT_EQ(running.line(), "PM: Enabled(0) 253,253,254");
  ASSERT_EQ(prismal("settings usePrismal on"), 0);
  EXPECT_EQ(running.line(), "PM: Enabled(1) 255,0,0");
  ASSERT_EQ(prismal("notify settings"), 0);
  EXPECT_EQ(running.line(), "PM: Enabled(1) 255,0,0");
}

}  // namespace
