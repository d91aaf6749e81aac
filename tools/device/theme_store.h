#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/files/device_root.h"
#include "host/files/result.h"
#include "platform/property_list.h"
#include "theme/merge.h"
#include "theme/theme_source.h"

namespace tools::device {

/// The themes that are installed on a device, each as its author wrote it, and the merged theme
/// file that is made of all of them. Changes are staged and become true together, by commit; for
/// them the process must have begun a Change. The device must outlive the store. Failures name the
/// file on the device.
class ThemeStore {
 public:
  /// What people should know of a change that went through, a line each.
  using Notes = std::vector<std::string>;

  static host::files::Result<ThemeStore> read(const host::files::DeviceRoot& device);

  /// From the lowest to the topmost, which wins.
  const std::vector<std::string>& names() const { return names_; }
  /// An installed theme with the device paths of its pictures.
  host::files::Result<platform::PropertyList> theme(std::string_view name) const;

  /// Lays a theme over all others, in place of one of its name. The notes tell of its missing
  /// pictures. Refuses a name that no folder or no property list can hold.
  host::files::Result<Notes> install(const theme::ThemeSource& source);
  /// Takes a theme away; false when there is none of that name.
  bool uninstall(std::string_view name);
  void uninstallAll();

  /// Makes the changes true. What can fail has been done before the first file is replaced; a
  /// process that is killed between two of them leaves each of them whole, and finish makes them
  /// agree. The notes tell what of the themes couldn't be merged.
  host::files::Result<Notes> commit();

  /// Makes the merged theme file anew when it isn't what the themes, none of them changed here,
  /// make. Whether it was; never on a device whose merged file is somebody else's, nor when a theme
  /// can't be read.
  host::files::Result<bool> finish() const;

 private:
  explicit ThemeStore(const host::files::DeviceRoot& device) : device_(device) {}

  host::files::Result<platform::PropertyList> read(std::string_view name,
                                                   std::string_view folder) const;
  host::files::Result<std::vector<theme::Layer>> layers(Notes& unreadable) const;
  std::string orderFile() const;
  host::files::Result<host::files::Done> moveStaged() const;

  const host::files::DeviceRoot& device_;
  std::vector<std::string> names_;
  std::vector<std::string> staged_;  // new below kStaged, and among the names
};

}  // namespace tools::device
