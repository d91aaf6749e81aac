#pragma once

#include <string_view>

#include "platform/graphics.h"

namespace prismal {

/// Replaces the keyboard's `UIKBGetNamedColor`: the theme's colour while the master switch is on,
/// else whatever the platform answers.
platform::CGColorRef PMNamedColorReplacement(std::string_view name);

}  // namespace prismal
