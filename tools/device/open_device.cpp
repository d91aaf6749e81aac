#include "device/open_device.h"

#include <CLI/App.hpp>
#include <cerrno>

namespace tools::device {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Failure;
using host::files::Result;

void addDeviceOption(CLI::App& command, Place& place) {
  command
      .add_option("--device-root", place,
                  "The directory that stands for the device's /, in place of "
                  "$XDG_DATA_HOME/prismal/device (~/.local/share/prismal/device)")
      ->type_name("DIR");
}

Result<DeviceRoot> openDevice(const Place& place, DeviceRoot::Creation creation) {
  if (place && place->empty()) return Failure(EINVAL, "--device-root names no directory");
  const fs::path path = place ? *place : host::files::defaultDeviceRoot();
  auto root = DeviceRoot::open(path, creation);
  if (!root) {
    return Failure(root.failure().error, "no device at " + path.string() + ": " + root.reason());
  }
  if (root->isMachineRoot()) {
    return Failure(EINVAL, path.string() + ": this machine's own root can't be a device");
  }
  return root;
}

Result<std::optional<DeviceRoot>> openDeviceIfAny(const Place& place) {
  auto device = openDevice(place, DeviceRoot::Creation::kNever);
  if (!device && !place && device.failure().error == ENOENT) return std::optional<DeviceRoot>();
  if (!device) return device.failure();
  return std::optional(*std::move(device));
}

}  // namespace tools::device
