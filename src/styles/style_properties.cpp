#include "styles/style_properties.h"

#include <cstddef>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

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

void setTransparentForeground(UIKBRenderTraits traits, PropertyListView) {
  traits.setBackgroundGradient({});
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

enum class ValueType { kString, kNumber, kTrue };

/// In line by force, like valueUnder: for one property, most of it is known when it is compiled.
[[gnu::always_inline]] inline bool hasType(PropertyListView value, ValueType type) {
  switch (type) {
    case ValueType::kString:
      return value.isString();
    case ValueType::kNumber:
      return value.isNumber();
    case ValueType::kTrue:
      return value.isNumber() && value.boolValue();
  }
  return false;
}

struct StyleProperty {
  std::string_view key;
  ValueType type;
  StylePart part;
  void (*set)(UIKBRenderTraits traits, PropertyListView value);
};

// The order is part of the format: the transparent foreground takes away the gradient that stands
// before it in the same dictionary.
constexpr StyleProperty kStyleProperties[] = {
    {"BackgroundGradient", ValueType::kString, StylePart::kBackground, &setBackgroundGradient},
    {"TransparentForeground", ValueType::kTrue, StylePart::kBackground, &setTransparentForeground},
    {"TextColor", ValueType::kString, StylePart::kTextColor, &setTextColor},
    {"EtchColor", ValueType::kString, StylePart::kEtchColor, &setEtchColor},
    {"SecondaryTextColor", ValueType::kString, StylePart::kSecondaryTextColor,
     &setSecondaryTextColor},
    {"EtchOffsetX", ValueType::kNumber, StylePart::kEtchOffsetX, &setEtchOffsetX},
    {"EtchOffsetY", ValueType::kNumber, StylePart::kEtchOffsetY, &setEtchOffsetY},
    {"FontName", ValueType::kString, StylePart::kFontName, &setFontName},
};

/// The value under `key` in a dictionary of those entries. Most are so small that a look at each
/// key is quickest.
[[gnu::always_inline]] inline PropertyListView valueUnder(
    std::string_view key, PropertyListView style,
    std::span<const platform::PropertyListEntry> entries) {
  constexpr std::size_t kFew = 8;
  if (entries.size() > kFew) return style.objectForKey(key);
  for (const auto& entry : entries) {
    if (entry.key == key) return entry.value;
  }
  return {};
}

/// Calls `visit` with each property that `style` sets, and its value, in the order of the table.
template <class Visit>
void forEachSetting(PropertyListView style, Visit visit) {
  // Most dictionaries set one or two properties: when all entries are used up, the rest can't be
  // there.
  const auto entries = style.entries();
  std::size_t remaining = entries.size();
  const auto take = [&](const StyleProperty& property) __attribute__((always_inline)) {
    const PropertyListView value = valueUnder(property.key, style, entries);
    if (!value || !hasType(value, property.type)) return true;
    visit(property, value);
    return --remaining != 0;
  };
  // No loop: each property gets code of its own, in which its key and what sets it are constants.
  const auto takeAll = [&]<std::size_t... kPlace>(std::index_sequence<kPlace...>) {
    return (take(kStyleProperties[kPlace]) && ...);
  };
  if (remaining != 0) takeAll(std::make_index_sequence<std::size(kStyleProperties)>());
}

}  // namespace

std::vector<StyleSetting> styleSettings(PropertyListView style) {
  std::vector<StyleSetting> settings;
  forEachSetting(style, [&](const StyleProperty& property, PropertyListView value) {
    settings.push_back({property.key, property.part, value});
  });
  return settings;
}

void applyStyle(PropertyListView style, UIKBRenderTraits traits) {
  forEachSetting(style, [&](const StyleProperty& property, PropertyListView value) {
    property.set(traits, value);
  });
}

}  // namespace prismal
