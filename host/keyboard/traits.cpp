#include "host/keyboard/traits.h"

#include <algorithm>
#include <map>
#include <utility>

#include "host/runtime/class_table.h"

namespace host::keyboard {

namespace {

/// Effect classes by name, those included that `objc_getClass` doesn't find.
std::map<std::string, objc_class*, std::less<>>& effectClasses() {
  static auto& classes = *new std::map<std::string, objc_class*, std::less<>>;
  return classes;
}

objc_class* rootEffectClass() {
  return runtime::defineClass("UIKBRenderEffect");
}

// Looked up once: every key that is drawn has several objects of these.

objc_class* textStyleClass() {
  static objc_class* const cls = runtime::defineClass("UIKBTextStyle");
  return cls;
}

objc_class* arrayClass(bool canChange) {
  static objc_class* const classes[] = {runtime::defineClass("NSArray"),
                                        runtime::defineClass("NSMutableArray")};
  return classes[canChange ? 1 : 0];
}

objc_class* traitsClass() {
  static objc_class* const cls = runtime::defineClass("UIKBRenderTraits");
  return cls;
}

}  // namespace

TextStyleObject::TextStyleObject() : objc_object(textStyleClass()) {}

ArrayObject::ArrayObject(std::vector<platform::Retained<platform::Object>> elements, bool canChange)
    : objc_object(arrayClass(canChange)), objects(std::move(elements)), isMutable(canChange) {}

TraitsObject::TraitsObject() : objc_object(traitsClass()) {}

objc_class* effectClass(std::string_view name) {
  const auto found = effectClasses().find(name);
  return found == effectClasses().end() ? declareEffectClass(name, rootEffectClass())
                                        : found->second;
}

objc_class* declareEffectClass(std::string_view name, objc_class* superclass) {
  return effectClasses().emplace(name, runtime::makeAnonymousClass(name, superclass)).first->second;
}

void defineEffectClasses() {
  for (const std::string_view name : {"UIKBEdgeEffect", "UIKBShadowEffect"}) {
    effectClasses().emplace(name, runtime::defineClass(name, rootEffectClass()));
  }
}

}  // namespace host::keyboard

namespace platform {

using host::keyboard::ArrayObject;
using host::keyboard::TextStyleObject;
using host::keyboard::TraitsObject;
using host::runtime::as;

void UIKBTextStyle::setTextColor(std::string_view colorName) const {
  if (auto* const style = as<TextStyleObject>(*this)) style->textColor = colorName;
}

void UIKBTextStyle::setEtchColor(std::string_view colorName) const {
  if (auto* const style = as<TextStyleObject>(*this)) style->etchColor = colorName;
}

void UIKBTextStyle::setFontName(std::string_view fontName) const {
  if (auto* const style = as<TextStyleObject>(*this)) style->fontName = fontName;
}

EtchOffset UIKBTextStyle::etchOffset() const {
  const auto* const style = as<TextStyleObject>(*this);
  return style ? style->etchOffset : EtchOffset();
}

void UIKBTextStyle::setEtchOffset(EtchOffset offset) const {
  if (auto* const style = as<TextStyleObject>(*this)) style->etchOffset = offset;
}

bool NSArray::isMutable() const {
  const auto* const array = as<ArrayObject>(*this);
  return array && array->isMutable;
}

std::size_t NSArray::count() const {
  const auto* const array = as<ArrayObject>(*this);
  return array ? array->objects.size() : 0;
}

Object NSArray::objectAtIndex(std::size_t index) const {
  const auto* const array = as<ArrayObject>(*this);
  return array && index < array->objects.size() ? array->objects[index].get() : Object();
}

void NSArray::removeObjectsInArray(std::span<const Object> objects) const {
  auto* const array = as<ArrayObject>(*this);
  if (!array) return;
  std::erase_if(array->objects, [&](const Retained<Object>& element) {
    return std::ranges::find(objects, element.get()) != objects.end();
  });
}

NSArray UIKBRenderTraits::renderEffects() const {
  const auto* const traits = as<TraitsObject>(*this);
  return traits ? traits->renderEffects.get() : NSArray();
}

void UIKBRenderTraits::setBackgroundGradient(UIKBGradient gradient) const {
  if (auto* const traits = as<TraitsObject>(*this)) traits->backgroundGradient = Retained(gradient);
}

UIKBTextStyle UIKBRenderTraits::symbolStyle() const {
  const auto* const traits = as<TraitsObject>(*this);
  return traits ? traits->symbolStyle.get() : UIKBTextStyle();
}

UIKBTextStyle UIKBRenderTraits::secondarySymbolStyle() const {
  const auto* const traits = as<TraitsObject>(*this);
  return traits ? traits->secondarySymbolStyle.get() : UIKBTextStyle();
}

}  // namespace platform
