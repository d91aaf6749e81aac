#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host::files {

/// The file name that stands for a notification's name: itself, but for every byte other than
/// A-Z a-z 0-9 . _ - and for a leading dot, which become %XX. Different names have different files.
/// None for an empty name and for one that no file name can hold (more than 255 bytes).
std::optional<std::string> fileNameOfNotification(std::string_view name);

}  // namespace host::files
