#include "serve/theme_facts.h"

#include "theme/theme_source.h"
#include "watch/theme_files.h"

namespace tools::serve {

namespace {

Json stylesOf(const theme::ThemeSource& source) {
  Json styles = Json::array();
  for (const auto& [name, rules] : source.list().objectForKey("Styles").entries()) {
    styles.push_back({{"name", name}, {"rules", rules.items().size()}});
  }
  return styles;
}

}  // namespace

bool canBeRead(const std::string& path) {
  return static_cast<bool>(theme::ThemeSource::read(path));
}

Json factsOf(const std::string& path) {
  Json facts = {{"name", theme::themeName(path)},
                {"files", Json::array()},
                {"styles", Json::array()},
                {"pictures", Json::array()}};
  const auto source = theme::ThemeSource::read(path);
  for (const auto& file : watch::filesOfTheme(path, source ? &*source : nullptr)) {
    facts["files"].push_back(file.string());
  }
  if (source) {
    facts["styles"] = stylesOf(*source);
    facts["pictures"] = source->pictures();
  }
  return facts;
}

}  // namespace tools::serve
