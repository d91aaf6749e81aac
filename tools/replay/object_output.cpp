#include "replay/object_output.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string>
#include <variant>

#include "host/keyboard/gradient.h"
#include "host/keyboard/traits.h"
#include "host/views/color.h"
#include "host/views/image.h"
#include "host/views/view.h"
#include "replay/made_objects.h"
#include "scenario/json_output.h"

namespace tools::replay {

using host::runtime::as;
using scenario::number;
using Json = ObjectOutput::Json;

namespace {

template <class Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json(nullptr);
}

unsigned byteOf(double component) {
  return static_cast<unsigned>(std::lround(std::fmin(std::fmax(component, 0), 1) * 255));
}

struct GradientJson {
  Json operator()(const host::keyboard::FlatColors& colors) const {
    return {{"flatColor", colors.color}};
  }
  Json operator()(const host::keyboard::LinearColors& colors) const {
    return {{"startColor", colors.start}, {"endColor", colors.end}};
  }
  Json operator()(const host::keyboard::OwnGradient& colors) const {
    return {{"name", colors.name}};
  }
};

Json textStyle(platform::UIKBTextStyle handle) {
  const auto* const style = as<host::keyboard::TextStyleObject>(handle);
  if (!style) return nullptr;
  return {{"textColor", orNull(style->textColor)},
          {"etchColor", orNull(style->etchColor)},
          {"fontName", orNull(style->fontName)},
          {"etchOffset",
           Json::array({number(style->etchOffset.first), number(style->etchOffset.second)})}};
}

Json effect(platform::Object handle) {
  const auto* const given = as<GivenEffect>(handle);
  if (!given) return handle.get()->isa->name;
  if (!given->given.superclass) return given->given.className;
  return {{"class", given->given.className}, {"superclass", *given->given.superclass}};
}

Json size(const std::optional<std::array<std::int32_t, 2>>& pixels) {
  return pixels ? Json::array({(*pixels)[0], (*pixels)[1]}) : Json(nullptr);
}

}  // namespace

Json ObjectOutput::color(platform::CGColorRef handle) const {
  const auto* const color = as<host::views::ColorObject>(handle);
  if (!color) return nullptr;
  const auto& rgba = color->components;
  std::array<char, 16> hex{};
  std::snprintf(hex.data(), hex.size(), "#%02X%02X%02X%02X", byteOf(rgba[0]), byteOf(rgba[1]),
                byteOf(rgba[2]), byteOf(rgba[3]));
  Json components = Json::array();
  for (const double component : rgba) components.push_back(number(component));
  return {{"hex", hex.data()}, {"components", std::move(components)}};
}

Json ObjectOutput::gradient(platform::UIKBGradient handle) const {
  const auto* const gradient = as<host::keyboard::GradientObject>(handle);
  return gradient ? std::visit(GradientJson(), gradient->colors) : Json(nullptr);
}

Json ObjectOutput::traits(platform::UIKBRenderTraits handle, bool effectsMutable) const {
  const auto* const traits = as<host::keyboard::TraitsObject>(handle);
  if (!traits) return nullptr;
  Json effects;
  if (const auto array = traits->renderEffects.get()) {
    effectsMutable = array.isMutable();
    effects = Json::array();
    for (std::size_t i = 0; i < array.count(); ++i)
      effects.push_back(effect(array.objectAtIndex(i)));
  }
  return {{"renderEffects", std::move(effects)},
          {"renderEffectsMutable", effectsMutable},
          {"backgroundGradient", gradient(traits->backgroundGradient.get())},
          {"symbolStyle", textStyle(traits->symbolStyle.get())},
          {"secondarySymbolStyle", textStyle(traits->secondarySymbolStyle.get())}};
}

Json ObjectOutput::backgroundTraits(platform::UIKBRenderTraits handle) const {
  const auto* const traits = as<host::keyboard::TraitsObject>(handle);
  if (!traits) return nullptr;
  return {{"backgroundGradient", gradient(traits->backgroundGradient.get())}};
}

Json ObjectOutput::view(platform::UIView handle) {
  const auto* const view = as<host::views::ViewObject>(handle);
  if (!view) return nullptr;
  const auto* const imageView = as<host::views::ImageViewObject>(handle);
  Json told = {{"class", view->isa->name},
               {"tag", view->tag},
               {"frame", Json::array({number(view->frame.x), number(view->frame.y),
                                      number(view->frame.width), number(view->frame.height)})},
               {"image", imageView ? image(imageView->image.get()) : Json(nullptr)}};
  Json subviews = Json::array();
  for (const auto& subview : view->subviews) subviews.push_back(this->view(subview.get()));
  told["subviews"] = std::move(subviews);
  return told;
}

Json ObjectOutput::image(platform::UIImage handle) {
  if (!handle) return nullptr;
  const Numbered next{platform::Retained<platform::Object>(handle), numbered_.size() + 1};
  const std::size_t id = numbered_.emplace(handle.get(), next).first->second.id;
  if (const auto* const given = as<GivenImage>(handle)) {
    return {{"path", orNull(given->given.path)},
            {"scale", given->given.scale ? number(*given->given.scale) : Json(nullptr)},
            {"size", size(given->given.size)},
            {"id", id}};
  }
  const auto* const image = as<host::views::ImageObject>(handle);
  const auto* const bitmap = image ? image->bitmap() : nullptr;
  if (!bitmap) return nullptr;
  return {{"path", bitmap->path},
          {"scale", number(image->scale)},
          {"size", Json::array({bitmap->bitmap.width, bitmap->bitmap.height})},
          {"id", id}};
}

}  // namespace tools::replay
