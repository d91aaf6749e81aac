#pragma once

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "host/files/device_root.h"
#include "host/files/temporary_directory.h"

namespace host::files {

/// A device root with a directory beside it that nothing inside may reach. Paths are device paths,
/// taken literally: what is prepared here goes through no code under test.
class SampleDevice {
 public:
  explicit SampleDevice(const std::string& root_name = "root")
      : root_(directory_.path() / root_name), outside_(directory_.path() / "outside") {
    std::filesystem::create_directories(root_);
    std::filesystem::create_directories(outside_);
    write(outside_ / "kept", "outside");
  }

  DeviceRoot open() const { return *DeviceRoot::open(root_, DeviceRoot::Creation::kNever); }
  DeviceRoot open(Resolution resolution) const {
    return *DeviceRoot::open(root_, DeviceRoot::Creation::kNever, resolution);
  }

  std::filesystem::path machine(const std::string& path) const { return root_ / path.substr(1); }
  const std::filesystem::path& outside() const { return outside_; }

  void file(const std::string& path, const std::string& bytes) const {
    std::filesystem::create_directories(machine(path).parent_path());
    write(machine(path), bytes);
  }
  void directory(const std::string& path) const {
    std::filesystem::create_directories(machine(path));
  }
  void link(const std::string& path, const std::string& target) const {
    std::filesystem::create_directories(machine(path).parent_path());
    std::filesystem::create_symlink(target, machine(path));
  }
  void pipe(const std::string& path) const { ::mkfifo(machine(path).c_str(), 0600); }

  /// Targets of links that lead to `outside` for whoever follows them on the machine.
  std::string absoluteWayOut() const { return outside_.string(); }
  std::string relativeWayOut() const {
    std::string up;
    for (int i = 0; i < 30; ++i) up += "../";
    return up + outside_.string().substr(1);
  }
  bool outsideIsUntouched() const { return read(outside_ / "kept") == "outside"; }

  static std::string read(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  static void write(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }

 private:
  TemporaryDirectory directory_;
  std::filesystem::path root_;
  std::filesystem::path outside_;
};

/// The ways to resolve paths that this machine has.
inline std::vector<Resolution> waysToResolve() {
  const Descriptor machine(::open("/", O_PATH | O_CLOEXEC));
  if (bestResolution(machine.get()) == Resolution::kWalk) return {Resolution::kWalk};
  return {Resolution::kKernel, Resolution::kWalk};
}

inline std::string nameOfWay(const testing::TestParamInfo<Resolution>& way) {
  return way.param == Resolution::kKernel ? "Kernel" : "Walk";
}

}  // namespace host::files
