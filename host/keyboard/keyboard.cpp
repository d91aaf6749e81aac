#include "host/keyboard/keyboard.h"

#include "host/keyboard/cache.h"
#include "host/keyboard/gradient.h"
#include "host/keyboard/text_object.h"
#include "host/keyboard/traits.h"
#include "host/runtime/class_table.h"
#include "host/runtime/hooking.h"

namespace host::keyboard {

using platform::Object;
using platform::SEL;
using platform::UIKeyboardImpl;

namespace {

void systemUpdateReturnKey(UIKeyboardImpl self, SEL, Object argument) {
  runtime::platformImplementationRuns("-[UIKeyboardImpl updateReturnKey:]");
  auto* const input = runtime::as<KeyboardObject>(self);
  const auto* const text = runtime::as<TextObject>(argument);
  if (input && text) input->returnKey = text->text;
}

void defineInputClass() {
  objc_class* const cls = runtime::defineClass("UIKeyboardImpl");
  runtime::addMethod(cls,
                     "updateReturnKey:", reinterpret_cast<platform::IMP>(&systemUpdateReturnKey));
  const KeyboardObject model;
  runtime::addVariable(cls, {"m_orientation", offsetOf(model, &KeyboardObject::orientation),
                             objc_ivar::Kind::kInt32});
  runtime::addVariable(cls, {"m_layout", offsetOf(model, &KeyboardObject::layout)});
}

}  // namespace

KeyboardObject::KeyboardObject() : objc_object(runtime::defineClass("UIKeyboardImpl")) {}

Keyboard::Keyboard()
    : input(runtime::makeRetained<UIKeyboardImpl, KeyboardObject>()),
      layout(runtime::makeRetained<platform::UIKeyboardLayoutStar, LayoutObject>()),
      factory(runtime::makeRetained<platform::UIKBRenderFactory, FactoryObject>()),
      dictationView(
          runtime::makeRetained<platform::UIKeyboardDicationBackgroundGradientView,
                                DictationViewObject>("UIKeyboardDicationBackgroundGradientView")) {
  inputObject().layout.set(layout.get());
}

void defineKeyboardClasses(const std::vector<std::string>& missingClasses,
                           const std::vector<std::string>& missingInstanceVariables) {
  defineInputClass();
  defineLayoutClass();
  defineRenderFactoryClasses();
  defineGradientClass();
  defineEffectClasses();
  defineDictationViewClass();
  defineCacheClass();
  for (const std::string& name : missingInstanceVariables) {
    runtime::removeVariable(runtime::defineClass("UIKeyboardImpl"), name);
  }
  for (const std::string& name : missingClasses) runtime::hideClass(name);
  platform::OBJC_CLASS_UIKeyboardImpl = platform::objc_getClass("UIKeyboardImpl");
}

Keyboard& keyboard() {
  static Keyboard& instance = *new Keyboard;
  return instance;
}

void updateReturnKey(UIKeyboardImpl keyboard, std::string_view argument) {
  const auto text = runtime::makeRetained<Object, TextObject>(std::string(argument));
  runtime::send<void>(keyboard, platform::sel_registerName("updateReturnKey:"), text.get());
}

}  // namespace host::keyboard

namespace platform {

Class OBJC_CLASS_UIKeyboardImpl;

UIKeyboardImpl UIKeyboardImpl::sharedInstance() {
  const auto& keyboard = host::keyboard::keyboard();
  return keyboard.isShared ? keyboard.input.get() : UIKeyboardImpl();
}

bool UIKeyboardRequiresInternationalKey() {
  return host::keyboard::keyboard().requiresInternationalKey;
}

}  // namespace platform
