#pragma once

#include <filesystem>
#include <vector>

#include "keyboard/keyboard_process.h"

namespace tools::watch {

/// The files of this machine that the theme of `dress` is made of, there or not: its property list,
/// and the pictures that it names with their double-resolution siblings. Of a theme that can't be
/// read, the property list alone. It is read in a process of its own, sandboxed if the dress is.
std::vector<std::filesystem::path> filesOfTheme(const keyboard::Dress& dress);

}  // namespace tools::watch
