#include "device/leftovers.h"

#include <cerrno>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "device/places.h"
#include "device/theme_store.h"
#include "platform/property_list.h"
#include "theme/dictionary_file.h"

namespace tools::device {

using host::files::DeviceRoot;
using host::files::Done;
using host::files::Result;
using platform::PropertyListView;

namespace {

/// What lies in a folder and is needed, by name.
using Names = std::set<std::string, std::less<>>;

/// Adds what of `folder` the device paths in `value` lead to.
void addNamed(Names& names, PropertyListView value, std::string_view folder) {
  for (const auto& entry : value.entries()) addNamed(names, entry.value, folder);
  const std::string path =
      std::filesystem::path(value.string().value_or("")).lexically_normal().string();
  if (!path.starts_with(folder)) return;
  const std::string below = path.substr(folder.size());
  names.insert(below.substr(0, below.find('/')));
}

/// The same for the list at `list`. False when it is there and can't be read: who knows what it
/// names?
bool addNamedBy(Names& names, const DeviceRoot& device, std::string_view list,
                std::string_view folder) {
  const auto read = theme::readDictionary(device, list, "it");
  if (!read) return read.failure().error == ENOENT;
  addNamed(names, *read, folder);
  return true;
}

void dropThemes(const DeviceRoot& device) {
  const auto store = ThemeStore::read(device);
  if (!store) return;
  Names names(store->names().begin(), store->names().end());
  if (!addNamedBy(names, device, kMergedTheme, kThemes)) return;
  static_cast<void>(device.removeAllBut(kThemes, names));
}

void dropPictures(const DeviceRoot& device) {
  Names names;
  for (const std::string_view list : {kSettings, kDefaultSettings}) {
    if (!addNamedBy(names, device, list, kPictures)) return;
  }
  static_cast<void>(device.removeAllBut(kPictures, names));
}

}  // namespace

Result<Done> clearLeftovers(const DeviceRoot& device) {
  for (const auto folder : {kPreferences, kOwnFolder}) {
    if (auto cleared = device.removeNewFiles(folder); !cleared) return cleared;
  }
  dropThemes(device);
  dropPictures(device);
  return device.remove(kStaged);
}

}  // namespace tools::device
