#pragma once

#include "platform/keyboard.h"

namespace prismal {

/// Replaces `-[UIKBRenderFactory traitsForKey:onKeyplane:]`: the platform's traits without their
/// edge effects, and with every style of the theme whose rule holds for the key, in rule order. The
/// master switch is not asked; it decides when the colour names are looked up.
platform::UIKBRenderTraits PMKeyTraitsReplacement(platform::UIKBRenderFactory self,
                                                  platform::SEL selector, platform::UIKBTree key,
                                                  platform::UIKBTree keyplane);

}  // namespace prismal
