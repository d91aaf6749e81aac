#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tools::watch {

/// The files of this machine that the theme at `path` is made of, there or not: its property list,
/// and the pictures that it names with their double-resolution siblings. Of a theme that can't be
/// read, the property list alone.
std::vector<std::filesystem::path> filesOfTheme(const std::string& path);

}  // namespace tools::watch
