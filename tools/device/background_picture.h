#pragma once

#include <string>
#include <string_view>

#include "host/files/device_root.h"
#include "host/files/result.h"

namespace tools::device {

/// A picture of this machine on its way to be the background that the user chose for a visual style
/// and an orientation. It and its double-resolution sibling have a folder of their own on the
/// device, so that nothing of an earlier picture stays. For this the process must have begun a
/// Change, and the device must outlive it.
class BackgroundPicture {
 public:
  /// Reads the picture at `path` of this machine and copies it to where it waits. Refuses what is
  /// no picture; the failure's text names the file.
  static host::files::Result<BackgroundPicture> stage(const host::files::DeviceRoot& device,
                                                      std::string_view style,
                                                      std::string_view orientation,
                                                      const std::string& path);

  /// The device path that it will have.
  std::string path() const { return folder_ + "/" + name_; }
  /// Takes the place of the picture that was chosen before.
  host::files::Result<host::files::Done> putInPlace() const;

 private:
  BackgroundPicture(const host::files::DeviceRoot& device, std::string folder, std::string name)
      : device_(device), folder_(std::move(folder)), name_(std::move(name)) {}

  const host::files::DeviceRoot& device_;
  std::string folder_;
  std::string name_;
};

/// Takes away the picture that was chosen for a visual style and an orientation, if it was copied.
host::files::Result<host::files::Done> dropBackgroundPicture(const host::files::DeviceRoot& device,
                                                             std::string_view style,
                                                             std::string_view orientation);

}  // namespace tools::device
