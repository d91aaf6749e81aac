#include "theme/theme_source.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "host/plist/builder.h"

namespace tools::theme {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Result;
using host::plist::Builder;

namespace {

constexpr std::string_view kThemesFolder = "/var/mobile/Library/Prismal/Themes/";
constexpr std::string_view kImages = "BackgroundImages";

}  // namespace

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
  if (!file) return file.failure();
  return ThemeSource(*std::move(file), themeName(path));
}

Result<std::vector<std::string>> ThemeSource::putOn(const DeviceRoot& device) const {
  const std::string folder = std::string(kThemesFolder) + name_ + "/";
  Builder builder;
  std::vector<Builder::Entry> images;
  std::vector<std::string> missing;
  for (const auto& [key, value] : list().objectForKey(kImages).entries()) {
    const std::string_view written = value.string().value_or("");
    images.push_back({key, value});
    if (isDevicePath(written)) continue;
    std::string path;
    const auto failure = copyPicture(file_.folder, written, device, folder, path);
    if (!path.empty()) images.back().value = builder.string(path);
    if (!failure) continue;
    missing.push_back(name_ + ": BackgroundImages: " + std::string(key) + ": " +
                      std::string(written) + ": " + *failure);
  }
  std::vector<Builder::Entry> sections;
  for (const auto& section : list().entries()) sections.push_back(section);
  if (list().objectForKey(kImages).isDictionary()) {
    sections.push_back({kImages, builder.dictionary(images)});
  }
  const auto root = builder.dictionary(sections);
  if (auto put = device.writeFile(kMergedThemeFile, fileOf(root)); !put) return put.failure();
  return missing;
}

}  // namespace tools::theme
