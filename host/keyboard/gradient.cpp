#include "host/keyboard/gradient.h"

#include <map>
#include <string_view>
#include <utility>

#include "host/keyboard/boards/system_look.h"
#include "host/runtime/class_table.h"
#include "host/runtime/hooking.h"

namespace host::keyboard {

using platform::Class;
using platform::SEL;
using platform::UIKBGradient;

namespace {

struct Knowledge {
  std::optional<Names> ownNames;
  Names rejectedColors;
  /// Who asks for one of the platform's own gradients doesn't own it.
  std::map<std::string, platform::Retained<UIKBGradient>, std::less<>> handedOut;
};

Knowledge& knowledge() {
  static Knowledge& known = *new Knowledge;
  return known;
}

objc_class* gradientClass() {
  static objc_class* const cls = runtime::defineClass("UIKBGradient");
  return cls;
}

bool platformKnows(std::string_view name) {
  const auto& own = knowledge().ownNames;
  return own ? own->contains(name) : boards::systemGradient(name) != nullptr;
}

UIKBGradient systemGradientWithName(Class, SEL, std::string_view name) {
  runtime::platformImplementationRuns("+[UIKBGradient gradientWithName:]");
  if (!platformKnows(name)) return {};
  auto& gradients = knowledge().handedOut;
  auto found = gradients.find(name);
  if (found == gradients.end()) {
    auto made = runtime::makeRetained<UIKBGradient, GradientObject>(OwnGradient{std::string(name)});
    found = gradients.emplace(name, std::move(made)).first;
  }
  return found->second.get();
}

bool isRejected(std::string_view colorName) {
  return knowledge().rejectedColors.contains(colorName);
}

SEL gradientWithNameSelector() {
  static const SEL selector = platform::sel_registerName("gradientWithName:");
  return selector;
}

}  // namespace

GradientObject::GradientObject(Colors gradientColors)
    : objc_object(gradientClass()), colors(std::move(gradientColors)) {}

void defineGradientClass() {
  runtime::addMethod(gradientClass()->isa,
                     "gradientWithName:", reinterpret_cast<platform::IMP>(&systemGradientWithName));
}

platform::UIKBGradient askNamedGradient(std::string_view name) {
  return UIKBGradient::gradientWithName(platform::objc_getClass("UIKBGradient"), name);
}

void setSystemGradients(std::optional<Names> names) {
  knowledge().ownNames = std::move(names);
}

void setRejectedColors(Names names) {
  knowledge().rejectedColors = std::move(names);
}

}  // namespace host::keyboard

namespace platform {

using host::keyboard::GradientObject;
using host::keyboard::isRejected;

UIKBGradient UIKBGradient::gradientWithName(Class receiver, std::string_view name) {
  return host::runtime::send<UIKBGradient>(receiver, host::keyboard::gradientWithNameSelector(),
                                           name);
}

UIKBGradient UIKBGradient::gradientWithFlatColor(Class receiver, std::string_view colorName) {
  if (!receiver || isRejected(colorName)) return {};
  return UIKBGradient(host::runtime::makeAutoreleased<GradientObject>(
      host::keyboard::FlatColors{std::string(colorName)}));
}

UIKBGradient UIKBGradient::gradientWithStartColor(Class receiver, std::string_view startColorName,
                                                  std::string_view endColorName) {
  if (!receiver || isRejected(startColorName) || isRejected(endColorName)) return {};
  return UIKBGradient(host::runtime::makeAutoreleased<GradientObject>(
      host::keyboard::LinearColors{std::string(startColorName), std::string(endColorName)}));
}

}  // namespace platform
