#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/files/device_root.h"
#include "host/files/result.h"
#include "platform/property_list.h"

namespace tools::theme {

/// A theme as its author keeps it: a folder NAME.theme with theme.plist and its pictures, or a
/// property-list file that stands alone.
class ThemeSource {
 public:
  /// Reads the theme at `path` of this machine. The failure's text names the file and, inside it,
  /// the place.
  static host::files::Result<ThemeSource> read(const std::string& path);

  /// The dictionary of the theme, as written.
  const platform::PropertyList& list() const { return list_; }
  const std::string& name() const { return name_; }

  /// Puts the theme on a device: its pictures below /var/mobile/Library/Prismal/Themes/NAME/, and
  /// the merged theme file, in which every picture's path is that of the device. Pictures that the
  /// folder doesn't have, or that lie outside it, are left out, as they would be missing on a
  /// device; the answer says which and why, a line each.
  host::files::Result<std::vector<std::string>> putOn(const host::files::DeviceRoot& device) const;

 private:
  ThemeSource(platform::PropertyList list, std::string name, host::files::DeviceRoot folder)
      : list_(std::move(list)), name_(std::move(name)), folder_(std::move(folder)) {}

  /// Copies a picture and its double-resolution sibling. None when there was one of them, else why
  /// not.
  std::optional<std::string> copyPicture(const host::files::DeviceRoot& device,
                                         const std::string& path,
                                         const std::string& devicePath) const;

  platform::PropertyList list_;
  std::string name_;
  host::files::DeviceRoot folder_;  ///< paths of pictures are resolved in it and can't leave it
};

}  // namespace tools::theme
