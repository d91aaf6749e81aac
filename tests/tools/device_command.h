#pragma once

// Commands that change a device: the one in $XDG_DATA_HOME.

#include <string>
#include <vector>

#include "command.h"
#include "host/files/device_root.h"

inline constexpr const char* kMergedTheme =
    "/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist";
inline constexpr const char* kUserSettings =
    "/var/mobile/Library/Preferences/net.quillon.prismal.plist";
inline constexpr const char* kDefaultSettings =
    "/var/mobile/Library/Preferences/net.quillon.prismal.default.plist";

class DeviceCommand : public Command {
 protected:
  static constexpr const char* kDevice = "prismal/device";

  std::filesystem::path onDevice(const std::string& path) const {
    return folder() / kDevice / path.substr(1);
  }
  std::string readDevice(const std::string& path) const { return read(kDevice + path); }

  /// The files of the device; what notifications leave and the lock aside.
  std::vector<std::string> files() const {
    auto device = host::files::DeviceRoot::open(folder() / kDevice,
                                                host::files::DeviceRoot::Creation::kNever);
    auto all = *device->list("/var/mobile");
    std::erase(all, "/var/mobile/Library/Prismal/.lock");
    return all;
  }

  /// A theme of one colour: that of the letter keys' faces.
  static std::string colored(const std::string& color, const std::string& more = "") {
    return "<dict><key>CustomColor</key><array><array><string>UIKBColorKeyLetter</string><string>" +
           color + "</string></array></array>" + more + "</dict>";
  }

  /// What the library makes of the device.
  host::images::Bitmap drawn(const std::string& options = "") const {
    const Outcome outcome = prismal("render --quiet -o drawn.png " + options);
    EXPECT_EQ(outcome.status, 0) << outcome.output;
    return picture("drawn.png");
  }
};
