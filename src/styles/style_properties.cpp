#include "styles/style_properties.h"

#include <cstddef>
#include <string_view>

#include "hooks/class_references.h"

namespace prismal {

using platform::PropertyListView;
using platform::UIKBGradient;
using platform::UIKBRenderTraits;

namespace {

void setBackgroundGradient(UIKBRenderTraits traits, PropertyListView value) {
  // Through the class, so that the theme's own gradients are found before the platform's. A name
  // that nobody knows leaves the key without a background.
  traits.setBackgroundGradient(
      UIKBGradient::gradientWithName(classes.UIKBGradient, *value.string()));
}

void setTransparentForeground(UIKBRenderTraits traits, PropertyListView value) {
  if (value.boolValue()) traits.setBackgroundGradient({});
}

void setTextColor(UIKBRenderTraits traits, PropertyListView value) {
  traits.symbolStyle().setTextColor(*value.string());
}

void setEtchColor(UIKBRenderTraits traits, PropertyListView value) {
  traits.symbolStyle().setEtchColor(*value.string());
}

void setSecondaryTextColor(UIKBRenderTraits traits, PropertyListView value) {
  traits.secondarySymbolStyle().setTextColor(*value.string());
}

void setEtchOffsetX(UIKBRenderTraits traits, PropertyListView value) {
  const auto style = traits.symbolStyle();
  style.setEtchOffset({value.floatValue(), style.etchOffset().second});
}

void setEtchOffsetY(UIKBRenderTraits traits, PropertyListView value) {
  const auto style = traits.symbolStyle();
  style.setEtchOffset({style.etchOffset().first, value.floatValue()});
}

void setFontName(UIKBRenderTraits traits, PropertyListView value) {
  traits.symbolStyle().setFontName(*value.string());
}

enum class ValueType { kString, kNumber };

bool hasType(PropertyListView value, ValueType type) {
  return type == ValueType::kString ? value.isString() : value.isNumber();
}

struct StyleProperty {
  std::string_view key;
  ValueType type;
  void (*set)(UIKBRenderTraits traits, PropertyListView value);
};

// The order is part of the format: the transparent foreground takes away the gradient that stands
// before it in the same dictionary.
constexpr StyleProperty kStyleProperties[] = {
    {"BackgroundGradient", ValueType::kString, &setBackgroundGradient},
    {"TransparentForeground", ValueType::kNumber, &setTransparentForeground},
    {"TextColor", ValueType::kString, &setTextColor},
    {"EtchColor", ValueType::kString, &setEtchColor},
    {"SecondaryTextColor", ValueType::kString, &setSecondaryTextColor},
    {"EtchOffsetX", ValueType::kNumber, &setEtchOffsetX},
    {"EtchOffsetY", ValueType::kNumber, &setEtchOffsetY},
    {"FontName", ValueType::kString, &setFontName},
};

}  // namespace

void applyStyle(PropertyListView style, UIKBRenderTraits traits) {
  // Most dictionaries set one or two properties: when all entries are used up, the rest can't be
  // there.
  std::size_t remaining = style.entries().size();
  for (const StyleProperty& property : kStyleProperties) {
    if (remaining == 0) return;
    const PropertyListView value = style.objectForKey(property.key);
    if (!hasType(value, property.type)) continue;
    property.set(traits, value);
    --remaining;
  }
}

}  // namespace prismal
