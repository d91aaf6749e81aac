#pragma once

#include <string_view>

#include "platform/property_list.h"

namespace tools::theme {

/// A theme as a device has it whose directory `directory` (with a slash at its end) holds the
/// pictures of the theme's folder: relative paths in BackgroundImages have become device paths.
/// Those that lead out of the folder stay as they are.
platform::PropertyList withDevicePaths(const platform::PropertyList& theme,
                                       std::string_view directory);

}  // namespace tools::theme
