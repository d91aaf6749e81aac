#include "theme/theme_source.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "device/places.h"
#include "theme/device_paths.h"

namespace tools::theme {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Durability;
using host::files::Failure;
using host::files::Result;

std::string themeName(const std::string& path) {
  std::error_code error;
  const fs::path whole = fs::absolute(path, error).lexically_normal();
  const fs::path last = whole.has_filename() ? whole.filename() : whole.parent_path().filename();
  return last.stem().string();
}

Result<ThemeSource> ThemeSource::read(const std::string& path) {
  std::error_code error;
  const bool isFolder = fs::is_directory(path, error);
  auto file =
      readDictionaryFile(isFolder ? fs::path(path) / "theme.plist" : fs::path(path), "a theme");
  if (!file && isFolder && file.failure().error == ENOENT) {
    return Failure(ENOENT, path + ": a theme folder has a theme.plist, this one has none");
  }
  if (!file) return file.failure();
  return ThemeSource(*std::move(file), themeName(path));
}

Result<std::vector<std::string>> ThemeSource::copyPictures(const DeviceRoot& device,
                                                           std::string_view directory,
                                                           Durability durability) const {
  std::vector<std::string> missing;
  for (const auto& [key, value] : list().objectForKey("BackgroundImages").entries()) {
    const std::string_view written = value.string().value_or("");
    if (isDevicePath(written)) continue;
    const auto tell = [&, &key = key](const std::string& reason) {
      missing.push_back(name_ + ": BackgroundImages: " + std::string(key) + ": " +
                        std::string(written) + ": " + reason);
    };
    const auto path = pathInFolder(written);
    if (!path) {
      tell("leads out of the folder");
      continue;
    }
    const auto copied = copyPicture(file_.folder, *path, device, directory, durability);
    if (!copied) return copied.failure();
    if (*copied) tell(**copied);
  }
  return missing;
}

Result<std::vector<std::string>> ThemeSource::putOn(const DeviceRoot& device) const {
  const std::string folder = std::string(device::kThemes) + name_ + "/";
  auto missing = copyPictures(device, folder, Durability::kNone);
  if (!missing) return missing;
  const auto theme = fileOf(withDevicePaths(list(), folder));
  if (auto put = device.writeFile(device::kMergedTheme, theme); !put) return put.failure();
  return missing;
}

}  // namespace tools::theme
