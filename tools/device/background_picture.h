#pragma once

#include <string>
#include <string_view>

#include "host/files/device_root.h"
#include "host/files/result.h"

namespace tools::device {

/// A picture of this machine on its way to be the background that the user chose for a visual style
/// and an orientation. It and its double-resolution sibling have a folder of their own on the
/// device, so that nothing of an earlier picture is mixed with it. That one keeps its folder until
/// no list names it any more: the settings name files that are there, whenever they are read. For
/// this the process must have begun a Change, and the device must outlive it.
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
  /// Goes to that path, where nobody looks for it yet.
  host::files::Result<host::files::Done> putInPlace() const;

 private:
  BackgroundPicture(const host::files::DeviceRoot& device, std::string folder, std::string name)
      : device_(device), folder_(std::move(folder)), name_(std::move(name)) {}

  const host::files::DeviceRoot& device_;
  std::string folder_;
  std::string name_;
};

}  // namespace tools::device
