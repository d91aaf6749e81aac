#include "theme/theme_source.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "backgrounds/double_resolution_path.h"
#include "host/plist/builder.h"
#include "host/plist/reader.h"
#include "host/plist/writer.h"

namespace tools::theme {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Done;
using host::files::Failure;
using host::files::Result;
using host::plist::Builder;
using platform::PropertyListView;

namespace {

constexpr std::string_view kMergedTheme =
    "/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist";
constexpr std::string_view kThemesFolder = "/var/mobile/Library/Prismal/Themes/";
constexpr std::string_view kImages = "BackgroundImages";
constexpr std::size_t kMaxBytes = std::size_t{64} << 20U;

/// A picture's path as it lies in the theme's folder; none when it is a device path already or
/// leads out of the folder.
std::optional<std::string> pathInFolder(std::string_view path) {
  if (path.empty() || path.starts_with('/')) return std::nullopt;
  const std::string inFolder = fs::path(path).lexically_normal().string();
  if (inFolder == ".." || inFolder.starts_with("../")) return std::nullopt;
  return inFolder;
}

}  // namespace

Result<ThemeSource> ThemeSource::read(const std::string& path) {
  std::error_code error;
  const bool isFolder = fs::is_directory(path, error);
  const fs::path file = isFolder ? fs::path(path) / "theme.plist" : fs::path(path);
  auto folder = DeviceRoot::open(file.has_parent_path() ? file.parent_path() : fs::path("."),
                                 DeviceRoot::Creation::kNever);
  if (!folder) return Failure(folder.failure().error, path + ": " + folder.reason());
  const auto bytes = folder->readFile(file.filename().string(), kMaxBytes);
  if (!bytes) return Failure(bytes.failure().error, file.string() + ": " + bytes.reason());
  auto reading = host::plist::read(*bytes);
  if (!reading) return Failure(EINVAL, file.string() + ": " + reading.reason);
  if (!reading.list.isDictionary()) {
    return Failure(EINVAL, file.string() + ": a theme is a dictionary, this is not");
  }
  const fs::path whole = fs::absolute(path, error).lexically_normal();
  const fs::path last = whole.has_filename() ? whole.filename() : whole.parent_path().filename();
  return ThemeSource(std::move(reading.list), last.stem().string(), *std::move(folder));
}

void ThemeSource::copyPicture(const DeviceRoot& device, std::string_view path,
                              const std::string& devicePath) const {
  if (const auto bytes = folder_.readFile(path, kMaxBytes)) {
    static_cast<void>(device.writeFile(devicePath, *bytes));
  }
}

Result<Done> ThemeSource::putOn(const DeviceRoot& device) const {
  const std::string folder = std::string(kThemesFolder) + name_ + "/";
  Builder builder;
  std::vector<Builder::Entry> images;
  for (const auto& [key, value] : list_.objectForKey(kImages).entries()) {
    const auto path = pathInFolder(value.string().value_or(""));
    if (!path) {
      images.push_back({key, value});
      continue;
    }
    const std::string devicePath = folder + *path;
    copyPicture(device, *path, devicePath);
    copyPicture(device, prismal::doubleResolutionPath(*path),
                prismal::doubleResolutionPath(devicePath));
    images.push_back({key, builder.string(devicePath)});
  }
  std::vector<Builder::Entry> sections;
  for (const auto& section : list_.entries()) sections.push_back(section);
  if (list_.objectForKey(kImages).isDictionary()) {
    sections.push_back({kImages, builder.dictionary(images)});
  }
  const auto root = builder.dictionary(sections);
  return device.writeFile(kMergedTheme, host::plist::writeBinary(root));
}

}  // namespace tools::theme
