#include "host/drawing/library_versions.h"

#include <cairo.h>
#include <ft2build.h>
#include <hb.h>
#include FT_FREETYPE_H

#include "host/drawing/face.h"

namespace host::drawing {
namespace {

std::string freeTypeVersion() {
  int major = 0, minor = 0, patch = 0;
  const FontLibrary library = startFontLibrary();
  if (library) FT_Library_Version(library.get(), &major, &minor, &patch);
  return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch);
}

}  // namespace

std::string libraryVersions() {
  return std::string("cairo ") + cairo_version_string() + ", FreeType " + freeTypeVersion() +
         ", HarfBuzz " + hb_version_string();
}

}  // namespace host::drawing
