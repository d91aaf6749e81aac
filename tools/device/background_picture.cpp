#include "device/background_picture.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <vector>

#include "backgrounds/double_resolution_path.h"
#include "device/places.h"
#include "host/images/decode.h"
#include "host/plist/description.h"
#include "text_file.h"

namespace tools::device {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Done;
using host::files::Durability;
using host::files::Failure;
using host::files::Result;

namespace {

std::string stagedFolder() {
  return std::string(kStaged) + "picture";
}

/// Named like the key of the theme format that the choice stands for; with a number behind it while
/// that folder is taken.
std::string freeFolder(const DeviceRoot& device, std::string_view style,
                       std::string_view orientation) {
  const std::string plain = std::string(kPictures).append(orientation).append(";").append(style);
  std::string folder = plain;
  for (int number = 2; device.exists(folder); ++number) {
    folder = plain + "~" + std::to_string(number);
  }
  return folder;
}

Result<Done> copy(const DeviceRoot& device, const std::string& path) {
  const auto bytes = readRegularFile(path);
  if (!bytes) return Failure(bytes.failure().error, path + ": " + bytes.reason());
  if (const auto decoded = host::images::decode(*bytes); !decoded) {
    return Failure(EINVAL, path + ": no picture: " + decoded.reason);
  }
  const std::string target = stagedFolder() + "/" + fs::path(path).filename().string();
  auto put = device.writeFile(target, *bytes, Durability::kSynced);
  if (!put) return Failure(put.failure().error, target + ": " + put.reason());
  return put;
}

}  // namespace

Result<BackgroundPicture> BackgroundPicture::stage(const DeviceRoot& device, std::string_view style,
                                                   std::string_view orientation,
                                                   const std::string& path) {
  std::string name = fs::path(path).filename().string();
  if (name.empty() || host::plist::escapeControls(name) != name) {
    return Failure(EINVAL, host::plist::escapeControls(path) + ": no picture can have this name");
  }
  if (const auto copied = copy(device, path); !copied) return copied.failure();
  const std::string sibling = prismal::doubleResolutionPath(path);
  if (std::error_code error; fs::exists(sibling, error)) {
    if (const auto copied = copy(device, sibling); !copied) return copied.failure();
  }
  return BackgroundPicture(device, freeFolder(device, style, orientation), std::move(name));
}

Result<Done> BackgroundPicture::putInPlace() const {
  auto moved = device_.moveTree(stagedFolder(), folder_);
  if (!moved) return Failure(moved.failure().error, folder_ + ": " + moved.reason());
  return moved;
}

}  // namespace tools::device
