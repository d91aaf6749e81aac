#pragma once

#include <string_view>

#include "platform/keyboard.h"

namespace prismal {

/// Replaces `+[UIKBGradient gradientWithName:]`: the theme's gradient, else the platform's own. The
/// master switch is not asked; it decides when the gradient's colours are looked up.
platform::UIKBGradient PMNamedGradientReplacement(platform::Class self, platform::SEL selector,
                                                  std::string_view name);

}  // namespace prismal
