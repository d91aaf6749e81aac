#include "styles/key_traits_hook.h"

#include <array>
#include <cstddef>
#include <span>

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

/// More than any key of the system has.
using Edges = std::array<Object, 8>;

/// Puts the first edge effects into `edges`, as many as there is room for; how many.
std::size_t findEdgeEffects(NSArray effects, Edges& edges) {
  std::size_t found = 0;
  for (std::size_t i = 0, count = effects.count(); i < count && found < edges.size(); ++i) {
    const Object effect = effects.objectAtIndex(i);
    if (effect.isKindOfClass(classes.UIKBEdgeEffect)) edges[found++] = effect;
  }
  return found;
}

/// Themed keys have no edge below them, whatever the theme says of them.
void removeEdgeEffects(NSArray effects) {
  if (!effects.isMutable()) return;
  Edges edges;
  std::size_t found = 0;
  do {  // again while the room was used up
    found = findEdgeEffects(effects, edges);
    effects.removeObjectsInArray(std::span(edges).first(found));
  } while (found == edges.size());
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
