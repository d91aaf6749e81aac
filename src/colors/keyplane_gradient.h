#pragma once

#include <string_view>

#include "platform/keyboard.h"

namespace prismal {

/// The two colour names of a keyplane background.
struct BackgroundColorNames {
  std::string_view start;
  std::string_view end;
  friend constexpr bool operator==(const BackgroundColorNames&,
                                   const BackgroundColorNames&) = default;
};

/// The pair that holds for keyplanes of that visual style: the alert pair or the standard one.
BackgroundColorNames backgroundColorNames(int visualStyle);

/// Replaces `-[UIKBRenderFactoryiPhone backgroundTraitsForKeyplane:]`: the platform's traits, with
/// a gradient between the pair's two colours when the theme defines both.
platform::UIKBRenderTraits PMBackgroundTraitsReplacement(platform::UIKBRenderFactory self,
                                                         platform::SEL selector,
                                                         platform::UIKBTree keyplane);

}  // namespace prismal
