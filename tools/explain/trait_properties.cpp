#include "explain/trait_properties.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <string>

#include "host/keyboard/traits.h"
#include "host/runtime/object.h"
#include "replay/object_output.h"
#include "scenario/json_output.h"

namespace tools::explain {

using host::keyboard::TextStyleObject;
using host::keyboard::TraitsObject;
using host::runtime::as;
using keyboard::Json;
using prismal::StylePart;

namespace {

unsigned byteOf(double component) {
  return static_cast<unsigned>(std::lround(component * 255));
}

Json hexOf(const host::drawing::Rgba& color) {
  std::array<char, 10> text{};
  std::snprintf(text.data(), text.size(), "#%02X%02X%02X%02X", byteOf(color.red),
                byteOf(color.green), byteOf(color.blue), byteOf(color.alpha));
  return text.data();
}

Json orNull(const std::optional<std::string>& text) {
  return text ? Json(*text) : Json(nullptr);
}

/// Puts the properties together that one key has.
class Properties {
 public:
  Properties(const TraitsObject& traits, const RuleOutcomes& outcomes)
      : traits_(traits), outcomes_(outcomes) {}

  std::vector<TraitProperty> all() const {
    const auto* const text = as<TextStyleObject>(traits_.symbolStyle.get());
    const auto* const second = as<TextStyleObject>(traits_.secondarySymbolStyle.get());
    const auto nameIn = [](const TextStyleObject* style, auto name) {
      return style ? style->*name : std::nullopt;
    };
    return {
        background(),
        transparency(),
        color("TextColor", StylePart::kTextColor, nameIn(text, &TextStyleObject::textColor)),
        color("EtchColor", StylePart::kEtchColor, nameIn(text, &TextStyleObject::etchColor)),
        color("SecondaryTextColor", StylePart::kSecondaryTextColor,
              nameIn(second, &TextStyleObject::textColor)),
        plain("EtchOffsetX", StylePart::kEtchOffsetX,
              text ? scenario::number(text->etchOffset.first) : Json()),
        plain("EtchOffsetY", StylePart::kEtchOffsetY,
              text ? scenario::number(text->etchOffset.second) : Json()),
        plain("FontName", StylePart::kFontName, orNull(nameIn(text, &TextStyleObject::fontName)))};
  }

 private:
  TraitProperty plain(std::string_view name, StylePart part, Json value) const {
    TraitProperty property;
    property.property = name;
    property.value = std::move(value);
    if (const auto& winner = outcomes_.winnerOf(part)) property.rule = winner->rule;
    return property;
  }

  TraitProperty color(std::string_view name, StylePart part,
                      const std::optional<std::string>& colorName) const {
    TraitProperty property = plain(name, part, orNull(colorName));
    if (!colorName) return property;
    property.namesColor = true;
    const ColorAnswer answer = askColor(*colorName);
    property.colorFrom = answer.from;
    if (answer.color) property.color = hexOf(*answer.color);
    return property;
  }

  TraitProperty background() const {
    const auto gradient = traits_.backgroundGradient.get();
    TraitProperty property = plain("BackgroundGradient", StylePart::kBackground,
                                   replay::ObjectOutput().gradient(gradient));
    const FillAnswer answer = askFill(gradient);
    property.namesColor = static_cast<bool>(gradient);
    property.colorFrom = answer.from;
    property.color = colorsOf(answer.fill);
    return property;
  }

  TraitProperty transparency() const {
    constexpr std::string_view kName = "TransparentForeground";
    TraitProperty property = plain(kName, StylePart::kBackground, false);
    const auto& winner = outcomes_.winnerOf(StylePart::kBackground);
    property.value = winner && winner->setting.property == kName;
    if (!property.value.get<bool>()) property.rule.reset();
    return property;
  }

  const TraitsObject& traits_;
  const RuleOutcomes& outcomes_;
};

}  // namespace

std::vector<TraitProperty> propertiesOf(platform::UIKBRenderTraits traits,
                                        const RuleOutcomes& outcomes) {
  const auto* const object = as<TraitsObject>(traits);
  if (!object) return {};
  return Properties(*object, outcomes).all();
}

Json colorsOf(const std::optional<host::drawing::Fill>& fill) {
  if (!fill) return nullptr;
  if (fill->isFlat()) return hexOf(fill->top);
  return Json::array({hexOf(fill->top), hexOf(fill->bottom)});
}

}  // namespace tools::explain
