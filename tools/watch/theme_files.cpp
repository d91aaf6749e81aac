#include "watch/theme_files.h"

#include <string>
#include <system_error>

#include "backgrounds/double_resolution_path.h"
#include "byte_strings.h"
#include "host/files/device_root.h"
#include "host/files/result.h"
#include "keyboard/confinement.h"
#include "keyboard/keyboard_child.h"
#include "theme/theme_source.h"

namespace tools::watch {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Result;

namespace {

/// The pictures that the theme names, as they lie in its folder.
std::vector<std::string> picturesOf(const theme::ThemeSource& source) {
  std::vector<std::string> pictures;
  for (const std::string& picture : source.pictures()) {
    pictures.push_back(picture);
    pictures.push_back(prismal::doubleResolutionPath(picture));
  }
  return pictures;
}

Result<std::string> readPictures(const keyboard::Dress& dress) {
  const auto device = DeviceRoot::open(*dress.private_device, DeviceRoot::Creation::kNever);
  if (!device) return device.failure();
  const auto confined = keyboard::confineToTheme(dress, *device);
  if (!confined) return confined.failure();
  const auto source = theme::ThemeSource::read(dress.theme);
  if (!source) return source.failure();
  return joined(picturesOf(*source));
}

std::vector<std::string> picturesOf(const keyboard::Dress& dress) {
  auto process = keyboard::KeyboardChild::start(dress, readPictures);
  if (!process) return {};
  const auto bytes = process->bytes();
  return bytes ? parted(*bytes).value_or(std::vector<std::string>()) : std::vector<std::string>();
}

std::vector<fs::path> filesOf(const fs::path& path, const std::vector<std::string>& pictures) {
  std::error_code error;
  // A folder may be gone for the moment; then its name tells.
  const bool isFolder = fs::is_directory(path, error) || path.extension() == ".theme";
  const fs::path list = isFolder ? path / "theme.plist" : path;
  std::vector<fs::path> files = {list};
  for (const std::string& picture : pictures) files.push_back(list.parent_path() / picture);
  return files;
}

}  // namespace

std::vector<fs::path> filesOfTheme(const keyboard::Dress& dress) {
  return filesOf(dress.theme, picturesOf(dress));
}

std::vector<fs::path> filesOfTheme(const std::string& theme, const theme::ThemeSource* source) {
  return filesOf(theme, source ? picturesOf(*source) : std::vector<std::string>());
}

}  // namespace tools::watch
