#pragma once

#include <string>
#include <string_view>

namespace host::drawing {

/// What a font's name tells of its look, in the words of the system font's own names.
struct FontTraits {
  std::string_view weight = "Regular";
  bool italic = false;
};

/// Reads `name` without regard to case; a name that tells nothing is regular and upright.
FontTraits traitsOf(std::string_view name);

/// The PostScript name of the system font in that look, such as "Inter-LightItalic".
std::string systemFontName(FontTraits traits);

}  // namespace host::drawing
