#pragma once

#include <optional>
#include <string_view>

#include "platform/keyboard.h"

namespace prismal {

/// The name under which a theme files what belongs to keyplanes of that visual style; none where
/// the device decides.
std::optional<std::string_view> visualStyleName(int visualStyle);

/// The visual style name of a keyplane: where its style says nothing, the standard one of the
/// device.
std::string_view PMGetVisualStyleName(platform::UIKBTree keyplane);

}  // namespace prismal
