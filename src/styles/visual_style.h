#pragma once

#include <string_view>

#include "platform/keyboard.h"

namespace prismal {

/// The name under which a theme files what belongs to keyplanes of that visual style.
/// `isTablet` decides for styles that no table names.
std::string_view visualStyleName(int visualStyle, bool isTablet);

/// The visual style name of a keyplane on this device.
std::string_view PMGetVisualStyleName(platform::UIKBTree keyplane);

}  // namespace prismal
