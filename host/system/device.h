#pragma once

#include <optional>
#include <string>

namespace host::system {

/// What the device answers about itself. May change at any time. Main thread only.
struct Device {
  double screenScale = 2;             ///< pixels a point
  std::optional<int> interfaceIdiom;  ///< 0 phone, 1 tablet; none: the device doesn't answer it
  std::string systemVersion = "7.0.4";
};

/// The device as it is now.
const Device& device();

/// From now on the device answers this.
void setDevice(Device device);

}  // namespace host::system
