#include "colors/keyplane_gradient.h"

#include "colors/color_cache.h"
#include "hooks/class_references.h"
#include "hooks/previous_implementations.h"
#include "support/no_throw.h"

namespace prismal {

BackgroundColorNames backgroundColorNames(int visualStyle) {
  if (visualStyle == 3 || visualStyle == 9) {
    return {"UIKBColorBackgroundAlertGradientStart", "UIKBColorBackgroundAlertGradientEnd"};
  }
  return {"UIKBColorBackgroundStandardGradientStart", "UIKBColorBackgroundStandardGradientEnd"};
}

platform::UIKBRenderTraits PMBackgroundTraitsReplacement(platform::UIKBRenderFactory self,
                                                         platform::SEL selector,
                                                         platform::UIKBTree keyplane) {
  const auto traits = previous.backgroundTraitsForKeyplane(self, selector, keyplane);
  withoutThrowing([&] {
    const auto names = backgroundColorNames(keyplane.visualStyle());
    if (!PMGetNamedColor(names.start) || !PMGetNamedColor(names.end)) return;
    // The names, not the colours: with the master switch off the platform resolves them.
    traits.setBackgroundGradient(platform::UIKBGradient::gradientWithStartColor(
        classes.UIKBGradient, names.start, names.end));
  });
  return traits;
}

}  // namespace prismal
