#pragma once

#include "platform/keyboard.h"

namespace prismal {

/// Puts the theme's image for `keyplane` behind the keys of `layout`, or clears the one that was
/// there. A layout without a background view is left alone.
void PMUpdateKeyplaneBackground(platform::UIKeyboardLayoutStar layout, platform::UIKBTree keyplane);

}  // namespace prismal
