#pragma once

#include "platform/keyboard.h"

namespace prismal {

// The moments at which the keyboard is built or changes. Each loads the settings the first time,
// lets the platform do all of its work, and leaves the arguments as they came.

/// Replaces `-[UIKeyboardImpl updateReturnKey:]`.
void PMUpdateReturnKeyReplacement(platform::UIKeyboardImpl self, platform::SEL selector,
                                  platform::Object argument);

/// Replaces `-[UIKeyboardLayoutStar showKeyboardWithInputTraits:screenTraits:splitTraits:]`: then
/// the background follows the keyplane that the platform has chosen.
void PMShowKeyboardReplacement(platform::UIKeyboardLayoutStar self, platform::SEL selector,
                               platform::Object inputTraits, platform::Object screenTraits,
                               platform::Object splitTraits);

/// Replaces `-[UIKeyboardLayoutStar updateKeyboardForKeyplane:]`: then the background follows
/// `keyplane`.
void PMUpdateKeyboardReplacement(platform::UIKeyboardLayoutStar self, platform::SEL selector,
                                 platform::UIKBTree keyplane);

}  // namespace prismal
