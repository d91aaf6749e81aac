#pragma once

#include "host/keyboard/object_variable.h"
#include "host/runtime/object.h"
#include "platform/keyboard.h"

namespace host::keyboard {

/// The view's controller that lays the keys out over a background view.
struct LayoutObject final : objc_object {
  /// A `UIKeyboardLayoutStar`.
  LayoutObject();
  /// A layout of another class, which may answer all the same.
  explicit LayoutObject(objc_class* cls) : objc_object(cls) {}
  ObjectVariable backgroundView;  ///< the instance variable "_backgroundView"
  bool showsDictationKey = false;
  platform::Retained<platform::UIKBTree> currentKeyplane;
  /// The keyplane that becomes current when the platform next shows or changes the keyboard.
  platform::Retained<platform::UIKBTree> nextKeyplane;
};

/// Defines `UIKeyboardLayoutStar`.
void defineLayoutClass();

/// Show a keyboard, or change its keyplane, as the platform does: through the layout's method
/// table. `next` is the keyplane that the platform makes the current one in it.
void showKeyboard(platform::UIKeyboardLayoutStar layout, platform::UIKBTree next);
void changeKeyplane(platform::UIKeyboardLayoutStar layout, platform::UIKBTree keyplane,
                    platform::UIKBTree next);

}  // namespace host::keyboard
