#include "theme/settings_source.h"

#include <string_view>

#include "device/places.h"
#include "host/plist/builder.h"
#include "host/plist/description.h"
#include "theme/complaints.h"
#include "theme/picture_copies.h"

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
  Pictures(const DeviceRoot& folder, const DeviceRoot& device)
      : copies_(folder, device, device::kPictures, Durability::kNone) {}

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

  std::vector<std::string> takeMissing() { return missing_.take("settings: backgroundImages"); }

 private:
  PropertyListView copy(Builder& builder, PropertyListView value) {
    const std::string_view written = value.string().value_or("");
    if (written.starts_with('/')) {
      tell(written, "a path of the device; not on the one that is drawn");
    }
    if (isDevicePath(written)) return value;
    const auto path = pathInFolder(written);
    if (!path) {
      tell(written, "leads out of the folder");
      return value;
    }
    const auto copied = copies_.copy(*path);
    if (!copied) tell(written, copied.reason());
    if (copied && *copied) tell(written, **copied);
    return builder.string(std::string(device::kPictures) + *path);
  }

  void tell(std::string_view written, const std::string& reason) {
    missing_.add("settings: backgroundImages: " + host::plist::inOneLine(written, kMaxToldName) +
                 ": " + reason);
  }

  PictureCopies copies_;
  Complaints missing_;
};

}  // namespace

Result<std::vector<std::string>> putSettingsOn(const DeviceRoot& device, const std::string& path) {
  const auto file = readDictionaryFile(path, Links::kLeadAnywhere, "a settings file");
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
  return pictures.takeMissing();
}

}  // namespace tools::theme
