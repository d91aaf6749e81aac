#pragma once

#include <optional>

#include "host/runtime/object.h"
#include "platform/keyboard.h"

namespace host::keyboard {

/// Decides how keys and keyplanes are drawn.
struct FactoryObject final : objc_object {
  FactoryObject();
  /// What the platform's own `traitsForKey:onKeyplane:` returns in place of the system look.
  std::optional<platform::Retained<platform::UIKBRenderTraits>> forcedTraits;
  /// The same for `backgroundTraitsForKeyplane:`.
  std::optional<platform::Retained<platform::UIKBRenderTraits>> forcedBackgroundTraits;
};

/// Defines `UIKBRenderFactory` and `UIKBRenderFactoryiPhone`.
void defineRenderFactoryClasses();

/// Ask a factory as the keyboard does: through its method table.
platform::UIKBRenderTraits askTraits(platform::UIKBRenderFactory factory, platform::UIKBTree key,
                                     platform::UIKBTree keyplane);
platform::UIKBRenderTraits askBackgroundTraits(platform::UIKBRenderFactory factory,
                                               platform::UIKBTree keyplane);

}  // namespace host::keyboard
