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

bool isDevicePath(std::string_view path) {
  return path.empty() || path.starts_with('/');
}

/// A relative path of a picture as it lies in the theme's folder; none when it leads out of it.
std::optional<std::string> pathInFolder(std::string_view path) {
  const std::string inFolder = fs::path(path).lexically_normal().string();
  if (inFolder == ".." || inFolder.starts_with("../")) return std::nullopt;
  return inFolder;
}

/// The list in the form that is read fastest, unless only the other one is short enough to be read.
std::string fileOf(PropertyListView list) {
  std::string binary = host::plist::writeBinary(list);
  return binary.size() <= kMaxBytes ? std::move(binary) : host::plist::writeXml(list);
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

std::optional<std::string> ThemeSource::copyPicture(const DeviceRoot& device,
                                                    const std::string& path,
                                                    const std::string& devicePath) const {
  const auto copy = [&](const std::string& from, const std::string& to) {
    const auto bytes = folder_.readFile(from, kMaxBytes);
    return bytes ? device.writeFile(to, *bytes) : Result<Done>(bytes.failure());
  };
  const auto plain = copy(path, devicePath);
  const auto sibling =
      copy(prismal::doubleResolutionPath(path), prismal::doubleResolutionPath(devicePath));
  if (plain || sibling) return std::nullopt;
  return plain.reason();
}

Result<std::vector<std::string>> ThemeSource::putOn(const DeviceRoot& device) const {
  const std::string folder = std::string(kThemesFolder) + name_ + "/";
  Builder builder;
  std::vector<Builder::Entry> images;
  std::vector<std::string> missing;
  for (const auto& [key, value] : list_.objectForKey(kImages).entries()) {
    const std::string_view written = value.string().value_or("");
    images.push_back({key, value});
    if (isDevicePath(written)) continue;
    std::optional<std::string> failure = "leads out of the theme's folder";
    if (const auto path = pathInFolder(written)) {
      failure = copyPicture(device, *path, folder + *path);
      images.back().value = builder.string(folder + *path);
    }
    if (!failure) continue;
    missing.push_back(name_ + ": BackgroundImages: " + std::string(key) + ": " +
                      std::string(written) + ": " + *failure);
  }
  std::vector<Builder::Entry> sections;
  for (const auto& section : list_.entries()) sections.push_back(section);
  if (list_.objectForKey(kImages).isDictionary()) {
    sections.push_back({kImages, builder.dictionary(images)});
  }
  const auto root = builder.dictionary(sections);
  if (auto put = device.writeFile(kMergedTheme, fileOf(root)); !put) return put.failure();
  return missing;
}

}  // namespace tools::theme
