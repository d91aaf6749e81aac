#include "theme/theme_source.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>
#include <system_error>

#include "device/places.h"
#include "host/plist/description.h"
#include "theme/complaints.h"
#include "theme/device_paths.h"
#include "theme/limits.h"
#include "theme/picture_copies.h"

namespace tools::theme {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Durability;
using host::files::Failure;
using host::files::Result;
using host::plist::inOneLine;

namespace {

constexpr const char* kImages = "BackgroundImages";

Result<std::optional<std::string>> leadsOut() {
  return std::optional<std::string>("leads out of the folder");
}

}  // namespace

std::string themeName(const std::string& path) {
  std::error_code error;
  const fs::path whole = fs::absolute(path, error).lexically_normal();
  const fs::path last = whole.has_filename() ? whole.filename() : whole.parent_path().filename();
  return last.stem().string();
}

bool isThemeName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == name.npos &&
         host::plist::escapeControls(name) == name;
}

Result<ThemeSource> ThemeSource::read(const std::string& path) {
  std::error_code error;
  const bool isFolder = fs::is_directory(path, error);
  auto file =
      isFolder ? readDictionaryFile(fs::path(path) / "theme.plist", Links::kStayInFolder, "a theme")
               : readDictionaryFile(path, Links::kLeadAnywhere, "a theme");
  if (!file && isFolder && file.failure().error == ENOENT) {
    return Failure(ENOENT, path + ": a theme folder has a theme.plist, this one has none");
  }
  if (!file) return file.failure();
  return ThemeSource(*std::move(file), themeName(path));
}

Result<std::vector<std::string>> ThemeSource::copyPictures(const DeviceRoot& device,
                                                           std::string_view directory,
                                                           Durability durability) const {
  Complaints missing;
  PictureCopies copies(file_.folder, device, directory, durability);
  for (const auto& [key, value] : list().objectForKey(kImages).entries()) {
    const std::string_view written = value.string().value_or("");
    if (isDevicePath(written)) continue;
    const auto path = pathInFolder(written);
    const auto copied = path ? copies.copy(*path) : leadsOut();
    if (!copied) return copied.failure();
    if (*copied) missing.add(complaint(key, written, **copied));
  }
  return missing.take(name_ + ": " + kImages);
}

std::string ThemeSource::complaint(std::string_view key, std::string_view written,
                                   const std::string& reason) const {
  return name_ + ": " + kImages + ": " + inOneLine(key, kMaxToldName) + ": " +
         inOneLine(written, kMaxToldName) + ": " + reason;
}

std::vector<std::string> ThemeSource::pictures() const {
  std::vector<std::string> pictures;
  std::set<std::string> known;
  for (const auto& [key, value] : list().objectForKey(kImages).entries()) {
    if (pictures.size() == kMaxPictures) break;
    const std::string_view written = value.string().value_or("");
    const auto path = isDevicePath(written) ? std::nullopt : pathInFolder(written);
    if (path && known.insert(*path).second) pictures.push_back(*path);
  }
  return pictures;
}

std::vector<std::string> ThemeSource::foreignPictures() const {
  Complaints foreign;
  for (const auto& [key, value] : list().objectForKey(kImages).entries()) {
    const std::string_view written = value.string().value_or("");
    if (!written.starts_with('/')) continue;
    foreign.add(complaint(key, written, "a path of the device; not on the one that is drawn"));
  }
  return foreign.take(name_ + ": " + kImages);
}

Result<std::vector<std::string>> ThemeSource::putOn(const DeviceRoot& device) const {
  const std::string folder = std::string(device::kThemes) + name_ + "/";
  auto missing = copyPictures(device, folder, Durability::kNone);
  if (!missing) return missing;
  std::ranges::move(foreignPictures(), std::back_inserter(*missing));
  const auto theme = fileOf(withDevicePaths(list(), folder));
  if (auto put = device.writeFile(device::kMergedTheme, theme); !put) return put.failure();
  return missing;
}

}  // namespace tools::theme
