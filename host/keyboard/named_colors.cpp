#include "host/keyboard/named_colors.h"

#include <string_view>
#include <utility>

#include "host/keyboard/boards/system_look.h"
#include "host/runtime/class_table.h"
#include "host/runtime/hooking.h"
#include "host/views/color.h"
#include "platform/keyboard.h"

namespace host::keyboard {

namespace {

using platform::CGColorRef;
using platform::Retained;

constinit std::optional<NamedColors> ownColors;

/// The colour objects handed out so far: who asks for a colour doesn't own it.
std::map<std::string, Retained<CGColorRef>, std::less<>>& handedOut() {
  static auto& colors = *new std::map<std::string, Retained<CGColorRef>, std::less<>>;
  return colors;
}

std::optional<std::array<double, 4>> systemComponents(std::string_view name) {
  if (ownColors) {
    const auto found = ownColors->find(name);
    if (found == ownColors->end()) return std::nullopt;
    return found->second;
  }
  const auto color = boards::systemColor(name);
  if (!color) return std::nullopt;
  return std::array{color->red, color->green, color->blue, color->alpha};
}

/// Apart, and so kept: what the theme's own names come past is short.
[[gnu::noinline]] CGColorRef handOutColor(std::string_view name) {
  auto& colors = handedOut();
  auto found = colors.find(name);
  if (found == colors.end()) {
    const auto components = systemComponents(name);
    if (!components) return {};
    found = colors.emplace(name, views::makeColor(*components)).first;
  }
  return found->second.get();
}

CGColorRef systemColor(std::string_view name) {
  runtime::platformImplementationRuns("UIKBGetNamedColor");
  if (!ownColors && !name.starts_with(boards::kColorPrefix)) return {};
  return handOutColor(name);
}

// Not made by the first call: hooks look the function up before anybody calls it.
runtime::HookableFunction<CGColorRef(std::string_view)> namedColorFunction(
    "UIKBGetNamedColor", &platform::UIKBGetNamedColor, &systemColor);

}  // namespace

void setSystemColors(std::optional<NamedColors> colors) {
  ownColors = std::move(colors);
  handedOut().clear();
}

}  // namespace host::keyboard

namespace platform {

CGColorRef UIKBGetNamedColor(std::string_view name) {
  return host::keyboard::namedColorFunction(name);
}

CGColorSpaceRef UIKBColorSpace() {
  static auto* const space = new objc_object(host::runtime::defineClass("CGColorSpace"));
  return CGColorSpaceRef(space);
}

}  // namespace platform
