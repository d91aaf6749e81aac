#include "backgrounds/layout_variant.h"

#include "hooks/class_references.h"

namespace prismal {

namespace {

bool showsDictationKey() {
  const auto layout = platform::UIKeyboardImpl::sharedInstance().valueForKey("m_layout");
  return layout.isKindOfClass(classes.UIKeyboardLayoutStar) &&
         platform::UIKeyboardLayoutStar(layout.get()).shouldShowDictationKey();
}

}  // namespace

std::uint64_t PMGetLayoutVariant(platform::UIKBTree keyplane) {
  auto variant = static_cast<std::uint64_t>(std::int64_t{keyplane.type()});
  if (showsDictationKey()) variant |= PMVariantDictationKey;
  if (!platform::UIKeyboardRequiresInternationalKey()) variant |= PMVariantNoInternationalKey;
  return variant;
}

}  // namespace prismal
