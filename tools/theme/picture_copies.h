#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "host/files/device_root.h"
#include "host/files/result.h"

namespace tools::theme {

/// Copies pictures of one folder to a device, each once however often it is asked for, and no more
/// than limits.h says. The roots must outlive it.
class PictureCopies {
 public:
  /// To the same paths below the device's directory `directory` (with a slash at its end).
  PictureCopies(const host::files::DeviceRoot& folder, const host::files::DeviceRoot& device,
                std::string_view directory, host::files::Durability durability)
      : folder_(folder), device_(device), directory_(directory), durability_(durability) {}

  /// Copies the picture at `path` in the folder, one of pathInFolder, and its double-resolution
  /// sibling. The answer is why there is neither, if so; a failure is the device's, and its text
  /// names the place there.
  host::files::Result<std::optional<std::string>> copy(const std::string& path);

  /// Why there is no such file; none when it has been copied.
  using Missing = std::optional<host::files::Failure>;

  /// Copies one file.
  host::files::Result<Missing> copyFile(const std::string& path);

 private:
  host::files::Result<Missing> copyNewFile(const std::string& path);

  const host::files::DeviceRoot& folder_;
  const host::files::DeviceRoot& device_;
  std::string directory_;
  host::files::Durability durability_;
  std::map<std::string, Missing> known_;
  std::size_t files_ = 0;
  std::size_t bytes_ = 0;
};

}  // namespace tools::theme
