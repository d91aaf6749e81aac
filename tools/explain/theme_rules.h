#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/files/result.h"
#include "keyboard/keyboard_process.h"
#include "platform/property_list.h"
#include "styles/style_table.h"

namespace tools::explain {

/// The rules of a theme as its author wrote them: unlike those on the device they have their
/// places.
class ThemeRules {
 public:
  /// Of the theme that this process's keyboard is dressed with; a device without one has no rules.
  static host::files::Result<ThemeRules> read(const keyboard::Dress& dress);

  /// The file, by the path under which the user knows it, or by that of the device.
  const std::string& file() const { return file_; }
  /// The list that keyplanes of that visual style get.
  prismal::StyleList listFor(std::string_view visualStyleName) const;
  /// Whether there is a list that no keyplane ever gets.
  bool hasUnreadList(std::string_view visualStyleName) const;

 private:
  ThemeRules(std::string file, platform::PropertyList theme)
      : file_(std::move(file)), theme_(std::move(theme)) {}

  std::string file_;
  platform::PropertyList theme_;
};

/// The line on which a value begins; none when its file is no XML.
std::optional<std::uint32_t> lineOf(platform::PropertyListView value);

}  // namespace tools::explain
