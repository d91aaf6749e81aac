#include "host/render/named_look.h"

#include <variant>

#include "host/keyboard/boards/system_look.h"
#include "host/keyboard/gradient.h"
#include "host/runtime/object.h"
#include "host/views/color.h"

namespace host::render {

using runtime::as;

namespace {

constexpr drawing::Rgba kContextColor{0, 0, 0, 1};

/// Towards this a colour fades without another tint.
drawing::Rgba clear(drawing::Rgba color) {
  color.alpha = 0;
  return color;
}

std::optional<drawing::Fill> fillBetween(std::string_view start, std::string_view end) {
  const auto top = colorNamed(start);
  const auto bottom = colorNamed(end);
  if (!top && !bottom) return std::nullopt;
  return drawing::Fill{top ? *top : clear(*bottom), bottom ? *bottom : clear(*top)};
}

struct FillOf {
  std::optional<drawing::Fill> operator()(const keyboard::FlatColors& colors) const {
    return fillBetween(colors.color, colors.color);
  }
  std::optional<drawing::Fill> operator()(const keyboard::LinearColors& colors) const {
    return fillBetween(colors.start, colors.end);
  }
  std::optional<drawing::Fill> operator()(const keyboard::OwnGradient& own) const {
    return fillNamed(own.name);
  }
};

}  // namespace

std::optional<drawing::Rgba> colorNamed(std::optional<std::string_view> name) {
  if (!name) return std::nullopt;
  const auto* const color = as<views::ColorObject>(platform::UIKBGetNamedColor(*name));
  if (!color) return std::nullopt;
  const auto& c = color->components;
  return drawing::Rgba{c[0], c[1], c[2], c[3]};
}

drawing::Rgba textColorNamed(std::optional<std::string_view> name) {
  return colorNamed(name).value_or(kContextColor);
}

std::optional<drawing::Fill> fillOf(platform::UIKBGradient handle) {
  const auto* const gradient = as<keyboard::GradientObject>(handle);
  return gradient ? std::visit(FillOf(), gradient->colors) : std::nullopt;
}

/// A theme may have defined one of the platform's own gradients anew, so it is asked for by name;
/// when the answer is the platform's own, its colours stand in the system look.
std::optional<drawing::Fill> fillNamed(std::string_view name) {
  const auto* const gradient = as<keyboard::GradientObject>(keyboard::askNamedGradient(name));
  if (!gradient) return std::nullopt;
  if (!std::holds_alternative<keyboard::OwnGradient>(gradient->colors)) {
    return std::visit(FillOf(), gradient->colors);
  }
  const auto* const system = boards::systemGradient(name);
  return system ? fillBetween(system->start, system->end) : std::nullopt;
}

}  // namespace host::render
