#include "hooks/hook_table.h"

#include <string_view>

#include "backgrounds/dictation_background.h"
#include "colors/keyplane_gradient.h"
#include "colors/named_color_hook.h"
#include "colors/named_gradient_hook.h"
#include "hooks/class_references.h"
#include "hooks/keyboard_cache.h"
#include "hooks/layout_hooks.h"
#include "hooks/previous_implementations.h"
#include "platform/runtime.h"
#include "styles/key_traits_hook.h"
#include "support/no_throw.h"

namespace prismal {

using platform::IMP;

namespace {

/// A method hook. Its replacement and its slot have the same type, or it does not compile.
struct MethodHook {
  template <class Signature>
  MethodHook(platform::Class hookedClass, std::string_view selectorName, Signature* function,
             PreviousImplementation<Signature>& previousImplementation)
      : target(hookedClass),
        selector(selectorName),
        replacement(reinterpret_cast<IMP>(function)),
        slot(previousImplementation.slot()) {}

  platform::Class target;
  std::string_view selector;
  IMP replacement;
  IMP* slot;
};

}  // namespace

void installHooks() {
  const MethodHook methodHooks[] = {
      {classes.UIKeyboardImpl, "updateReturnKey:", &PMUpdateReturnKeyReplacement,
       previous.updateReturnKey},
      {classes.UIKeyboardLayoutStar, "showKeyboardWithInputTraits:screenTraits:splitTraits:",
       &PMShowKeyboardReplacement, previous.showKeyboard},
      {classes.UIKeyboardLayoutStar, "updateKeyboardForKeyplane:", &PMUpdateKeyboardReplacement,
       previous.updateKeyboardForKeyplane},
      {classes.UIKBRenderFactory, "traitsForKey:onKeyplane:", &PMKeyTraitsReplacement,
       previous.traitsForKey},
      {classes.UIKBRenderFactoryiPhone, "backgroundTraitsForKeyplane:",
       &PMBackgroundTraitsReplacement, previous.backgroundTraitsForKeyplane},
      {classes.UIKeyboardDicationBackgroundGradientView,
       "setRenderConfig:", &PMDictationRenderConfigReplacement, previous.setRenderConfig},
      {classes.UIKBGradientMetaclass, "gradientWithName:", &PMNamedGradientReplacement,
       previous.gradientWithName},
      {classes.UIKeyboardCacheMetaclass, "enabled", &PMCacheEnabledReplacement,
       previous.cacheEnabled},
  };

  // One that fails must not keep the others from being installed.
  withoutThrowing([] {
    platform::MSHookFunction(reinterpret_cast<IMP>(&platform::UIKBGetNamedColor),
                             reinterpret_cast<IMP>(&PMNamedColorReplacement),
                             previous.UIKBGetNamedColor.slot());
  });
  for (const MethodHook& hook : methodHooks) {
    if (!hook.target) continue;
    withoutThrowing([&] {
      platform::MSHookMessageEx(hook.target, platform::sel_registerName(hook.selector),
                                hook.replacement, hook.slot);
    });
  }
}

}  // namespace prismal
