#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "host/files/device_root.h"
#include "host/files/result.h"
#include "platform/property_list.h"

namespace tools::theme {

/// A property-list file of this machine, and the folder in which the pictures that it names lie.
struct DictionaryFile {
  platform::PropertyList list;
  host::files::DeviceRoot folder;  ///< paths are resolved in it and can't leave it
};

/// Reads the dictionary in `file`. The failure's text names the file and, inside it, the place;
/// `what` is what the file should hold, for people.
host::files::Result<DictionaryFile> readDictionaryFile(const std::filesystem::path& file,
                                                       const std::string& what);

/// The bytes of `list`, in the form that is read fastest unless only the other one is short enough
/// to be read.
std::string fileOf(platform::PropertyListView list);

/// Whether a path that a theme or the settings name is one of the device already.
bool isDevicePath(std::string_view path);

/// Copies the picture at `path` in `folder`, as it is written in a list, and its double-resolution
/// sibling into the device's directory `directory` (with a slash at its end). `devicePath` becomes
/// where it then lies. None when there was one of them, else why not.
std::optional<std::string> copyPicture(const host::files::DeviceRoot& folder, std::string_view path,
                                       const host::files::DeviceRoot& device,
                                       std::string_view directory, std::string& devicePath);

}  // namespace tools::theme
