#pragma once

#include <string_view>

#include "platform/graphics.h"

namespace prismal {

/// Loads the picture that the file-name table has under `key`, anew at every call; null when it has
/// none there or the file gives no picture.
platform::Retained<platform::UIImage> loadBackgroundImage(std::string_view key);

}  // namespace prismal
