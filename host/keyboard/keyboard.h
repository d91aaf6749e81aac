#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/keyboard/dictation_view.h"
#include "host/keyboard/layout.h"
#include "host/keyboard/object_variable.h"
#include "host/keyboard/render_factory.h"
#include "host/runtime/object.h"
#include "platform/keyboard.h"

namespace host::keyboard {

/// The input object behind a keyboard on the screen.
struct KeyboardObject final : objc_object {
  KeyboardObject();
  std::int32_t orientation = 1;  ///< the instance variable "m_orientation"
  ObjectVariable layout;         ///< the instance variable "m_layout"
  std::string returnKey;         ///< the argument that last reached the platform
};

/// What one process has of the keyboard. Main thread only.
struct Keyboard {
  Keyboard();

  /// The keyboard that is asked to do things; shared unless `isShared` is false.
  platform::Retained<platform::UIKeyboardImpl> input;
  bool isShared = true;
  bool requiresInternationalKey = true;
  platform::Retained<platform::UIKeyboardLayoutStar> layout;
  platform::Retained<platform::UIKBRenderFactory> factory;
  platform::Retained<platform::UIKeyboardDicationBackgroundGradientView> dictationView;

  KeyboardObject& inputObject() const { return *runtime::as<KeyboardObject>(input.get()); }
  LayoutObject& layoutObject() const { return *runtime::as<LayoutObject>(layout.get()); }
  FactoryObject& factoryObject() const { return *runtime::as<FactoryObject>(factory.get()); }
  DictationViewObject& dictationViewObject() const {
    return *runtime::as<DictationViewObject>(dictationView.get());
  }
};

/// Defines every class of the keyboard, but for those that the host is to lack: their names are not
/// found, nor the named instance variables of `UIKeyboardImpl`. Once a process, before the library
/// is loaded.
void defineKeyboardClasses(const std::vector<std::string>& missingClasses,
                           const std::vector<std::string>& missingInstanceVariables);

/// The keyboard of this process.
Keyboard& keyboard();

/// Tells a keyboard of a new return key as the platform does: through its method table.
void updateReturnKey(platform::UIKeyboardImpl keyboard, std::string_view argument);

}  // namespace host::keyboard
