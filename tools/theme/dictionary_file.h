#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "host/files/device_root.h"
#include "host/files/result.h"
#include "platform/property_list.h"

namespace tools::theme {

/// A property-list file of this machine, and the folder in which the pictures that it names lie.
struct DictionaryFile {
  platform::PropertyList list;
  host::files::DeviceRoot folder;  ///< paths are resolved in it and can't leave it
};

/// Reads the dictionary in the file at `path` of a root. `what` is what it should hold, for people;
/// the failure's text names the place in the file and not the file.
host::files::Result<platform::PropertyList> readDictionary(const host::files::DeviceRoot& root,
                                                           std::string_view path,
                                                           const std::string& what);

/// How a file that can't be read could be: behind the reason, for people; empty when nobody knows.
std::string_view hintFor(std::string_view bytes);

/// Where a file may lie that is a link.
enum class Links : std::uint8_t {
  kLeadAnywhere,  ///< of a file that the user has named
  kStayInFolder,  ///< of one in a folder that may be a stranger's
};

/// All bytes of a property list of this machine, which lies in `folder`. A failure when they are
/// too many, and EXDEV where a link leads to where it must not.
host::files::Result<std::string> readListFile(const host::files::DeviceRoot& folder,
                                              const std::filesystem::path& file, Links links);

/// Like readDictionary, for a file of this machine; the failure's text names the file, too. The
/// folder is the one that `file` names, whatever the link.
host::files::Result<DictionaryFile> readDictionaryFile(const std::filesystem::path& file,
                                                       Links links, const std::string& what);

/// The bytes of `list`, in the form that is read fastest unless only the other one is short enough
/// to be read.
std::string fileOf(platform::PropertyListView list);

/// Whether a path that a theme or the settings name is one of the device already.
bool isDevicePath(std::string_view path);

/// A relative path of a picture, as it is written in a list, as it lies in its folder; none when it
/// leads out of it.
std::optional<std::string> pathInFolder(std::string_view path);

}  // namespace tools::theme
