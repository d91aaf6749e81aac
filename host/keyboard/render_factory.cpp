#include "host/keyboard/render_factory.h"

#include <string>
#include <utility>
#include <vector>

#include "host/keyboard/boards/system_look.h"
#include "host/keyboard/gradient.h"
#include "host/keyboard/traits.h"
#include "host/keyboard/tree.h"
#include "host/runtime/class_table.h"
#include "host/runtime/hooking.h"
#include "host/system/device.h"

namespace host::keyboard {

using platform::Object;
using platform::Retained;
using platform::SEL;
using platform::UIKBRenderFactory;
using platform::UIKBRenderTraits;
using platform::UIKBTextStyle;
using platform::UIKBTree;

namespace {

boards::Family deviceFamily() {
  return system::device().interfaceIdiom == 1 ? boards::Family::tablet : boards::Family::phone;
}

boards::KeyKind kindOf(UIKBTree key) {
  const boards::Role role = boards::roleOf(key.displayType());
  const bool isLetter = role == boards::Role::letter;
  const auto usual = isLetter ? boards::Lettering::character : boards::Lettering::word;
  const auto* const tree = runtime::as<TreeObject>(key);
  return {role, tree ? tree->lettering.value_or(usual) : usual};
}

/// How the system draws `key`, which may be null like its keyplane.
boards::KeyLook lookOf(UIKBTree key, UIKBTree keyplane) {
  const int style = keyplane.visualStyle();
  return boards::systemKeyLook(kindOf(key), boards::lookOf(style),
                               boards::familyOf(style, deviceFamily()), key.state());
}

std::optional<std::string> nameOrNone(std::string_view name) {
  if (name.empty()) return std::nullopt;
  return std::string(name);
}

/// One of the platform's own gradients, which a theme may have defined anew: that is asked when it
/// is drawn.
Retained<platform::UIKBGradient> ownGradient(std::string_view name) {
  if (name.empty()) return {};
  return runtime::makeRetained<platform::UIKBGradient, GradientObject>(
      OwnGradient{std::string(name)});
}

Retained<UIKBTextStyle> symbolStyle(const boards::KeyLook& look) {
  auto style = runtime::makeRetained<UIKBTextStyle, TextStyleObject>();
  auto& object = *runtime::as<TextStyleObject>(style.get());
  object.textColor = nameOrNone(look.text_color);
  object.etchColor = nameOrNone(look.etch_color);
  object.fontName = nameOrNone(look.font_name);
  object.etchOffset = {look.etch_offset_pt.x, look.etch_offset_pt.y};
  object.fontSize_pt = look.font_size_pt;
  return style;
}

Retained<UIKBTextStyle> secondaryStyle(const boards::KeyLook& look) {
  auto style = runtime::makeRetained<UIKBTextStyle, TextStyleObject>();
  auto& object = *runtime::as<TextStyleObject>(style.get());
  object.textColor = nameOrNone(look.secondary_text_color);
  object.fontName = nameOrNone(look.font_name);
  object.fontSize_pt = look.secondary_font_size_pt;
  return style;
}

Retained<platform::NSArray> effects(const boards::KeyLook& look) {
  std::vector<Retained<Object>> objects;
  if (!look.edge_color.empty()) {
    auto edge = runtime::makeRetained<Object, EffectObject>(effectClass("UIKBEdgeEffect"));
    runtime::as<EffectObject>(edge.get())->colorName = look.edge_color;
    objects.push_back(std::move(edge));
  }
  return runtime::makeRetained<platform::NSArray, ArrayObject>(std::move(objects), true);
}

UIKBRenderTraits systemTraitsForKey(UIKBRenderFactory self, SEL, UIKBTree key, UIKBTree keyplane) {
  runtime::platformImplementationRuns("-[UIKBRenderFactory traitsForKey:onKeyplane:]");
  if (const auto* const factory = runtime::as<FactoryObject>(self);
      factory && factory->forcedTraits) {
    return factory->forcedTraits->get();
  }
  const boards::KeyLook look = lookOf(key, keyplane);
  auto* const traits = runtime::makeAutoreleased<TraitsObject>();
  traits->renderEffects = effects(look);
  traits->backgroundGradient = ownGradient(look.gradient);
  traits->symbolStyle = symbolStyle(look);
  traits->secondarySymbolStyle = secondaryStyle(look);
  return UIKBRenderTraits(traits);
}

UIKBRenderTraits systemBackgroundTraits(UIKBRenderFactory self, SEL, UIKBTree keyplane) {
  runtime::platformImplementationRuns("-[UIKBRenderFactoryiPhone backgroundTraitsForKeyplane:]");
  if (const auto* const factory = runtime::as<FactoryObject>(self);
      factory && factory->forcedBackgroundTraits) {
    return factory->forcedBackgroundTraits->get();
  }
  auto* const traits = runtime::makeAutoreleased<TraitsObject>();
  const boards::Look look = boards::lookOf(keyplane.visualStyle());
  traits->backgroundGradient = ownGradient(boards::systemBackgroundGradient(look));
  return UIKBRenderTraits(traits);
}

objc_class* phoneFactoryClass() {
  static objc_class* const cls =
      runtime::defineClass("UIKBRenderFactoryiPhone", runtime::defineClass("UIKBRenderFactory"));
  return cls;
}

}  // namespace

FactoryObject::FactoryObject() : objc_object(phoneFactoryClass()) {}

void defineRenderFactoryClasses() {
  objc_class* const phone = phoneFactoryClass();
  runtime::addMethod(phone->superclass, "traitsForKey:onKeyplane:",
                     reinterpret_cast<platform::IMP>(&systemTraitsForKey));
  runtime::addMethod(phone, "backgroundTraitsForKeyplane:",
                     reinterpret_cast<platform::IMP>(&systemBackgroundTraits));
}

UIKBRenderTraits askTraits(UIKBRenderFactory factory, UIKBTree key, UIKBTree keyplane) {
  static const SEL selector = platform::sel_registerName("traitsForKey:onKeyplane:");
  return runtime::send<UIKBRenderTraits>(factory, selector, key, keyplane);
}

UIKBRenderTraits askBackgroundTraits(UIKBRenderFactory factory, UIKBTree keyplane) {
  static const SEL selector = platform::sel_registerName("backgroundTraitsForKeyplane:");
  return runtime::send<UIKBRenderTraits>(factory, selector, keyplane);
}

}  // namespace host::keyboard
