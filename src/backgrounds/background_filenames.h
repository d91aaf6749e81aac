#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/property_list.h"

namespace prismal {

/// Image paths by background key. In order of the keys, so that all that begin alike stand
/// together.
using BackgroundFilenames = std::map<std::string, std::string, std::less<>>;

/// The table of a theme's "BackgroundImages" and the settings' "backgroundImages". A picture that
/// the user has chosen for an orientation and a visual style replaces all that the theme has for
/// that pair. Entries of another type than text are left out, as are sections that are no
/// dictionaries.
BackgroundFilenames buildBackgroundFilenames(platform::PropertyListView themeImages,
                                             platform::PropertyListView userImages);

/// The process's table, built on the first call and kept as it is from then on.
const BackgroundFilenames& PMGetBackgroundImageFilenames();

}  // namespace prismal
