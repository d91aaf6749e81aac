#include "hooks/layout_hooks.h"

#include "backgrounds/keyplane_background.h"
#include "hooks/previous_implementations.h"
#include "settings/settings_store.h"
#include "support/no_throw.h"

namespace prismal {

using platform::Object;
using platform::SEL;

void PMUpdateReturnKeyReplacement(platform::UIKeyboardImpl self, SEL selector, Object argument) {
  withoutThrowing(PMInitializeSettings);
  previous.updateReturnKey(self, selector, argument);
}

void PMShowKeyboardReplacement(platform::UIKeyboardLayoutStar self, SEL selector,
                               Object inputTraits, Object screenTraits, Object splitTraits) {
  withoutThrowing(PMInitializeSettings);
  previous.showKeyboard(self, selector, inputTraits, screenTraits, splitTraits);
  // Asked for only now: the platform has just chosen it.
  withoutThrowing([&] { PMUpdateKeyplaneBackground(self, self.currentKeyplane()); });
}

void PMUpdateKeyboardReplacement(platform::UIKeyboardLayoutStar self, SEL selector,
                                 platform::UIKBTree keyplane) {
  withoutThrowing(PMInitializeSettings);
  previous.updateKeyboardForKeyplane(self, selector, keyplane);
  withoutThrowing([&] { PMUpdateKeyplaneBackground(self, keyplane); });
}

}  // namespace prismal
