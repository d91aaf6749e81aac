#pragma once

#include <filesystem>

namespace tools {

/// Where the library lies that belongs to this program: beside it in the build tree, or where
/// it was installed.
std::filesystem::path libraryPath();

}  // namespace tools
