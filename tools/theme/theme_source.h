#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "theme/dictionary_file.h"

namespace tools::theme {

/// What to call the theme at `path`: its last part without an extension.
std::string themeName(const std::string& path);

/// Whether a folder of a device can bear the name, and a property list name the folder.
bool isThemeName(std::string_view name);

/// A theme as its author keeps it: a folder NAME.theme with theme.plist and its pictures, or a
/// property-list file that stands alone.
class ThemeSource {
 public:
  /// Reads the theme at `path` of this machine. The failure's text names the file and, inside it,
  /// the place.
  static host::files::Result<ThemeSource> read(const std::string& path);

  /// The dictionary of the theme, as written.
  const platform::PropertyList& list() const { return file_.list; }
  const std::string& name() const { return name_; }

  /// Copies the theme's pictures into a device's directory `directory` (with a slash at its end).
  /// Those that the folder doesn't have, that lie outside it, or that are beyond limits.h are left
  /// out, as they would be missing on a device; the answer says which and why, a line each.
  host::files::Result<std::vector<std::string>> copyPictures(
      const host::files::DeviceRoot& device, std::string_view directory,
      host::files::Durability durability) const;

  /// Makes it the one theme of a device that is there to be drawn: its pictures below
  /// /var/mobile/Library/Prismal/Themes/NAME/, and the merged theme file, in which every picture's
  /// path is that of the device. Answers like copyPictures; a path that is one of the device
  /// already is missing there, too.
  host::files::Result<std::vector<std::string>> putOn(const host::files::DeviceRoot& device) const;

  /// The pictures in the folder that the theme names, as they lie there, each once and in the order
  /// of the list; of more than kMaxPictures, those that go with a theme, the first.
  std::vector<std::string> pictures() const;

 private:
  ThemeSource(DictionaryFile file, std::string name)
      : file_(std::move(file)), name_(std::move(name)) {}

  /// A line on the picture under `key`, whose path is `written`.
  std::string complaint(std::string_view key, std::string_view written,
                        const std::string& reason) const;
  /// A line for each picture whose path is one of a device.
  std::vector<std::string> foreignPictures() const;

  DictionaryFile file_;
  std::string name_;
};

}  // namespace tools::theme
