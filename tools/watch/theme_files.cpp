#include "watch/theme_files.h"

#include <system_error>

#include "backgrounds/double_resolution_path.h"
#include "theme/dictionary_file.h"
#include "theme/theme_source.h"

namespace tools::watch {

namespace fs = std::filesystem;

std::vector<fs::path> filesOfTheme(const std::string& path) {
  const auto source = theme::ThemeSource::read(path);
  std::error_code error;
  // A folder may be gone for the moment; then its name tells.
  const bool isFolder = fs::is_directory(path, error) || fs::path(path).extension() == ".theme";
  const fs::path list = isFolder ? fs::path(path) / "theme.plist" : fs::path(path);
  std::vector<fs::path> files = {list};
  if (!source) return files;
  const fs::path folder = list.parent_path();
  for (const auto& image : source->list().objectForKey("BackgroundImages").entries()) {
    const auto written = image.value.string().value_or("");
    if (theme::isDevicePath(written)) continue;
    const auto picture = theme::pathInFolder(written);
    if (!picture) continue;
    files.push_back(folder / *picture);
    files.push_back(folder / prismal::doubleResolutionPath(*picture));
  }
  return files;
}

}  // namespace tools::watch
