#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/files/device_root.h"
#include "host/files/result.h"
#include "platform/property_list.h"

namespace tools::device {

/// The settings of a device's user: what is in force, and changes of it. Whatever else the file
/// holds is kept. For changes the process must have begun a Change.
class SettingsFile {
 public:
  /// Those of a device that has no file of them.
  static SettingsFile defaults();
  /// Reads what the library would: the user's file or, when that is missing or holds no dictionary,
  /// the default one. Fails, naming the file, where the user's file is there and can't be looked
  /// into: it must not be replaced.
  static host::files::Result<SettingsFile> read(const host::files::DeviceRoot& device);

  /// The device path of the file that is in force; empty when there is none.
  std::string_view path() const { return path_; }
  /// Why the user's file is not in force though it is there.
  const std::optional<std::string>& fault() const { return fault_; }

  /// The master switch: on unless somebody has said otherwise.
  bool usePrismal() const;
  void setUsePrismal(bool use);

  /// By visual style and orientation, the user's own pictures; null when there are none.
  platform::PropertyListView backgrounds() const;
  /// Device paths; an empty one takes the picture away.
  void setBackground(std::string_view style, std::string_view orientation,
                     std::string_view picture);

  /// The user's file with these settings, ready to be put in its place; in the form, XML or binary,
  /// that it has.
  host::files::Result<host::files::NewFile> prepare(const host::files::DeviceRoot& device) const;

 private:
  SettingsFile() = default;

  platform::PropertyList list_;
  std::string_view path_;
  std::optional<std::string> fault_;
  bool is_binary_ = false;
};

}  // namespace tools::device
