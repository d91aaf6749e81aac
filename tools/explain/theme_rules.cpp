#include "explain/theme_rules.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "device/places.h"
#include "host/plist/node.h"
#include "theme/theme_source.h"

namespace tools::explain {

using host::files::Result;
using platform::PropertyList;

Result<ThemeRules> ThemeRules::read(const keyboard::Dress& dress) {
  if (dress.theme.empty()) {
    return ThemeRules(std::string(device::kMergedTheme),
                      PropertyList::dictionaryWithContentsOfFile(device::kMergedTheme));
  }
  const auto source = theme::ThemeSource::read(dress.theme);
  if (!source) return source.failure();
  std::error_code error;
  const std::filesystem::path path = dress.theme;
  const bool isFolder = std::filesystem::is_directory(path, error);
  return ThemeRules(isFolder ? (path / "theme.plist").string() : dress.theme, source->list());
}

prismal::StyleList ThemeRules::listFor(std::string_view visualStyleName) const {
  return prismal::styleListFor(theme_.objectForKey("Styles"), visualStyleName);
}

bool ThemeRules::hasUnreadList(std::string_view visualStyleName) const {
  return listFor(visualStyleName).name != visualStyleName &&
         theme_.objectForKey("Styles").objectForKey(visualStyleName);
}

std::optional<std::uint32_t> lineOf(platform::PropertyListView value) {
  if (!value || value.get()->position.line == 0) return std::nullopt;
  return value.get()->position.line;
}

}  // namespace tools::explain
