#include "styles/key_traits_hook.h"

#include <cstddef>
#include <vector>

#include "hooks/class_references.h"
#include "hooks/previous_implementations.h"
#include "settings/settings_store.h"
#include "styles/control_state.h"
#include "styles/style_matching.h"
#include "styles/style_properties.h"
#include "styles/style_table.h"
#include "styles/visual_style.h"
#include "support/no_throw.h"

namespace prismal {

using platform::NSArray;
using platform::Object;
using platform::UIKBRenderTraits;
using platform::UIKBTree;

namespace {

/// Themed keys have no edge below them, whatever the theme says of them.
void removeEdgeEffects(NSArray effects) {
  if (!effects.isMutable()) return;
  std::vector<Object> edges;
  for (std::size_t i = 0; i < effects.count(); ++i) {
    const Object effect = effects.objectAtIndex(i);
    if (effect.isKindOfClass(classes.UIKBEdgeEffect)) edges.push_back(effect);
  }
  effects.removeObjectsInArray(edges);
}

void applyTheme(UIKBRenderTraits traits, UIKBTree key, UIKBTree keyplane) {
  removeEdgeEffects(traits.renderEffects());
  const auto rules = PMGetStyles(PMGetVisualStyleName(keyplane));
  if (!rules) return;
  for (const auto style : PMGetMatchingStyles(rules, KeyIdentity(key), PMGetControlState(key))) {
    applyStyle(style, traits);
  }
}

}  // namespace

UIKBRenderTraits PMKeyTraitsReplacement(platform::UIKBRenderFactory self, platform::SEL selector,
                                        UIKBTree key, UIKBTree keyplane) {
  withoutThrowing(PMInitializeSettings);
  const UIKBRenderTraits traits = previous.traitsForKey(self, selector, key, keyplane);
  withoutThrowing([&] { applyTheme(traits, key, keyplane); });
  return traits;
}

}  // namespace prismal
