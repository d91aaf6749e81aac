#include "host/keyboard/layout.h"

#include "host/runtime/class_table.h"
#include "host/runtime/hooking.h"

namespace host::keyboard {

using platform::Object;
using platform::Retained;
using platform::SEL;
using platform::UIKBTree;
using platform::UIKeyboardLayoutStar;

namespace {

void makeNextKeyplaneCurrent(UIKeyboardLayoutStar self) {
  auto* const layout = runtime::as<LayoutObject>(self);
  if (layout) layout->currentKeyplane = layout->nextKeyplane;
}

void systemShowKeyboard(UIKeyboardLayoutStar self, SEL, Object, Object, Object) {
  runtime::platformImplementationRuns(
      "-[UIKeyboardLayoutStar showKeyboardWithInputTraits:screenTraits:splitTraits:]");
  makeNextKeyplaneCurrent(self);
}

void systemUpdateKeyboard(UIKeyboardLayoutStar self, SEL, UIKBTree) {
  runtime::platformImplementationRuns("-[UIKeyboardLayoutStar updateKeyboardForKeyplane:]");
  makeNextKeyplaneCurrent(self);
}

void setNext(UIKeyboardLayoutStar self, UIKBTree next) {
  if (auto* const layout = runtime::as<LayoutObject>(self)) layout->nextKeyplane = Retained(next);
}

}  // namespace

LayoutObject::LayoutObject() : objc_object(runtime::defineClass("UIKeyboardLayoutStar")) {}

void defineLayoutClass() {
  objc_class* const cls = runtime::defineClass("UIKeyboardLayoutStar");
  runtime::addMethod(cls, "showKeyboardWithInputTraits:screenTraits:splitTraits:",
                     reinterpret_cast<platform::IMP>(&systemShowKeyboard));
  runtime::addMethod(
      cls, "updateKeyboardForKeyplane:", reinterpret_cast<platform::IMP>(&systemUpdateKeyboard));
  const LayoutObject model;
  runtime::addVariable(cls, {"_backgroundView", offsetOf(model, &LayoutObject::backgroundView)});
}

void showKeyboard(UIKeyboardLayoutStar layout, UIKBTree next) {
  setNext(layout, next);
  runtime::send<void>(
      layout, platform::sel_registerName("showKeyboardWithInputTraits:screenTraits:splitTraits:"),
      Object(), Object(), Object());
}

void changeKeyplane(UIKeyboardLayoutStar layout, UIKBTree keyplane, UIKBTree next) {
  setNext(layout, next);
  runtime::send<void>(layout, platform::sel_registerName("updateKeyboardForKeyplane:"), keyplane);
}

}  // namespace host::keyboard

namespace platform {

using host::keyboard::LayoutObject;

UIKBTree UIKeyboardLayoutStar::currentKeyplane() const {
  const auto* const layout = host::runtime::as<LayoutObject>(*this);
  return layout ? layout->currentKeyplane.get() : UIKBTree();
}

bool UIKeyboardLayoutStar::shouldShowDictationKey() const {
  const auto* const layout = host::runtime::as<LayoutObject>(*this);
  return layout && layout->showsDictationKey;
}

}  // namespace platform
