#pragma once

#include <string>

namespace host::drawing {

/// The versions of what turns a picture into pixels in this process: "cairo 1.16.0, FreeType
/// 2.12.1, HarfBuzz 6.0.0". Any thread.
std::string libraryVersions();

}  // namespace host::drawing
