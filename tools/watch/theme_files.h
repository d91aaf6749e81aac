#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "keyboard/keyboard_process.h"
#include "theme/theme_source.h"

namespace tools::watch {

/// The files of this machine that the theme of `dress` is made of, there or not: its property list,
/// and the pictures that it names with their double-resolution siblings. Of a theme that can't be
/// read, the property list alone. It is read in a process of its own, sandboxed if the dress is.
std::vector<std::filesystem::path> filesOfTheme(const keyboard::Dress& dress);

/// The same of a theme that this process has read; null: of one that can't be read.
std::vector<std::filesystem::path> filesOfTheme(const std::string& theme,
                                                const theme::ThemeSource* source);

}  // namespace tools::watch
