#include "theme/settings_source.h"

#include <string_view>
#include <utility>

#include "device/places.h"
#include "host/plist/builder.h"
#include "host/plist/description.h"

namespace tools::theme {

using host::files::DeviceRoot;
using host::files::Durability;
using host::files::Result;
using host::plist::Builder;
using platform::PropertyListView;

namespace {

constexpr std::string_view kImages = "backgroundImages";

/// Rewrites the user's pictures for the device that they are copied to.
class Pictures {
 public:
  Pictures(const DeviceRoot& folder, const DeviceRoot& device) : folder_(folder), device_(device) {}

  /// By visual style, then by orientation.
  PropertyListView rewrite(Builder& builder, PropertyListView styles) {
    std::vector<Builder::Entry> rewritten;
    for (const auto& [style, orientations] : styles.entries()) {
      std::vector<Builder::Entry> pictures;
      for (const auto& [orientation, path] : orientations.entries()) {
        pictures.push_back({orientation, copy(builder, path)});
      }
      const bool holdsPictures = orientations.isDictionary();
      rewritten.push_back({style, holdsPictures ? builder.dictionary(pictures) : orientations});
    }
    return builder.dictionary(rewritten);
  }

  std::vector<std::string> missing;

 private:
  PropertyListView copy(Builder& builder, PropertyListView value) {
    const std::string_view written = value.string().value_or("");
    if (isDevicePath(written)) return value;
    const auto path = pathInFolder(written);
    if (!path) {
      tell(written, "leads out of the folder");
      return value;
    }
    const auto copied = copyPicture(folder_, *path, device_, device::kPictures, Durability::kNone);
    if (!copied) tell(written, copied.reason());
    if (copied && *copied) tell(written, **copied);
    return builder.string(std::string(device::kPictures) + *path);
  }

  void tell(std::string_view written, const std::string& reason) {
    missing.push_back("settings: backgroundImages: " + host::plist::escapeControls(written) + ": " +
                      reason);
  }

  const DeviceRoot& folder_;
  const DeviceRoot& device_;
};

}  // namespace

Result<std::vector<std::string>> putSettingsOn(const DeviceRoot& device, const std::string& path) {
  const auto file = readDictionaryFile(path, "a settings file");
  if (!file) return file.failure();
  Builder builder;
  Pictures pictures(file->folder, device);
  std::vector<Builder::Entry> entries;
  for (const auto& entry : file->list.entries()) entries.push_back(entry);
  if (const auto images = file->list.objectForKey(kImages); images.isDictionary()) {
    entries.push_back({kImages, pictures.rewrite(builder, images)});
  }
  const auto put = device.writeFile(device::kSettings, fileOf(builder.dictionary(entries)));
  if (!put) return put.failure();
  return std::move(pictures.missing);
}

}  // namespace tools::theme
