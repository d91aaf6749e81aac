#include "backgrounds/background_filenames.h"

#include <optional>
#include <utility>

#include "settings/settings_store.h"
#include "settings/theme_data.h"
#include "support/process_lifetime.h"

namespace prismal {

using platform::PropertyListView;

namespace {

void overrideAll(BackgroundFilenames& filenames, std::string prefix, std::string_view path) {
  auto last = filenames.lower_bound(prefix);
  while (last != filenames.end() && last->first.starts_with(prefix)) last = filenames.erase(last);
  filenames.insert_or_assign(std::move(prefix), std::string(path));
}

}  // namespace

BackgroundFilenames buildBackgroundFilenames(PropertyListView themeImages,
                                             PropertyListView userImages) {
  BackgroundFilenames filenames;
  for (const auto& [key, value] : themeImages.entries()) {
    // They come in order, so that each belongs behind all others.
    if (const auto path = value.string()) filenames.emplace_hint(filenames.end(), key, *path);
  }
  for (const auto& [style, orientations] : userImages.entries()) {
    for (const auto& [orientation, value] : orientations.entries()) {
      const auto path = value.string();
      if (!path) continue;
      std::string prefix(orientation);
      prefix.append(";").append(style);
      overrideAll(filenames, std::move(prefix), *path);
    }
  }
  return filenames;
}

const BackgroundFilenames& PMGetBackgroundImageFilenames() {
  static constinit ProcessLifetime<std::optional<BackgroundFilenames>> filenames;
  if (!*filenames) {
    const auto themeImages = PMGetThemeData().objectForKey("BackgroundImages");
    filenames->emplace(
        buildBackgroundFilenames(themeImages, settings->objectForKey("backgroundImages")));
  }
  return **filenames;
}

}  // namespace prismal
