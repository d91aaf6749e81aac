#include "sample_theme.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <string_view>

#include "host/plist/builder.h"

namespace bench {

using host::plist::Builder;
using platform::PropertyList;
using platform::PropertyListEntry;
using platform::PropertyListView;

namespace {

constexpr std::string_view kColorNames[] = {
    "Key ",   "Glass Top ",         "Letters of Alerts ", "Ember ", "Etch of the Letters ",
    "Night ", "Return Key Bottom ",
};

// Of twenty rules the first of these ...
constexpr std::string_view kHolding[] = {
    "*",
    "DisplayType=Letter",
    "Row=Row1;ControlState=3",
    "KeyName=Latin-Small-Letter-W,Latin-Small-Letter-Q",
    "DisplayType=Letter,Space;ControlState=2,3;Row=Row1",
};

// ... and the rest of these.
constexpr std::string_view kFailing[] = {
    "DisplayType=Return",
    "KeyName=Latin-Small-Letter-W",
    "DisplayType=Shift,Delete,More,International,Dictation",
    "ControlState=1",
    "Row=Row2,Row3;ControlState=3",
    "DisplayType=Letter;ControlState=1",
    "KeyName=Latin-Small-Letter-A,Latin-Small-Letter-S,Latin-Small-Letter-D",
    "DisplayTypeHint=10;Row=Row4",
    "Row=Row1;DisplayType=Space",
    "ControlState=1,2,6,7",
    "KeyName=Space-Key;ControlState=3",
    "DisplayType=Number-Pad,Top-Row;Row=Row1",
};

PropertyListView strings(Builder& builder, std::initializer_list<std::string_view> texts) {
  std::vector<PropertyListView> items;
  for (const auto text : texts) items.push_back(builder.string(text));
  return builder.array(items);
}

std::string hexadecimal(std::size_t i) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "#%08zX", (i * 2654435761U) & 0xFFFFFFFFU);
  return text.data();
}

/// A list of `count` items, each made by `make` of its number.
template <class Make>
PropertyList arrayOf(std::size_t count, Make make) {
  Builder builder;
  std::vector<PropertyListView> items;
  items.reserve(count);
  for (std::size_t i = 0; i < count; ++i) items.push_back(make(builder, i));
  return builder.finish(builder.array(items));
}

}  // namespace

std::string colorName(std::size_t i) {
  return std::string(kColorNames[i % std::size(kColorNames)]) + std::to_string(i);
}

std::string gradientName(std::size_t i) {
  return "Gradient of " + colorName(i);
}

PropertyList colorSection(std::size_t count) {
  return arrayOf(count, [](Builder& builder, std::size_t i) {
    return strings(builder, {colorName(i), hexadecimal(i)});
  });
}

PropertyList gradientSection(std::size_t count) {
  return arrayOf(count, [](Builder& builder, std::size_t i) {
    return strings(builder, {gradientName(i), colorName(i), colorName(i + 1)});
  });
}

std::vector<std::string> conditions(std::size_t count) {
  std::vector<std::string> texts;
  texts.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    texts.emplace_back(i % 20 == 7 ? kHolding[i / 20 % std::size(kHolding)]
                                   : kFailing[i % std::size(kFailing)]);
  }
  return texts;
}

PropertyList ruleList(std::size_t count) {
  const auto texts = conditions(count);
  return arrayOf(count, [&](Builder& builder, std::size_t i) {
    const std::array<PropertyListEntry, 3> style = {{
        {"BackgroundGradient", builder.string(gradientName(i))},
        {"EtchColor", builder.string(colorName(i))},
        {"TextColor", builder.string(colorName(i + 1))},
    }};
    return builder.array(std::array{builder.string(texts[i]), builder.dictionary(style)});
  });
}

PropertyList imageSection(std::size_t count, const std::string& path) {
  Builder builder;
  std::vector<PropertyListEntry> entries;
  entries.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string key =
        "Portrait;iPhone-Standard;" + std::to_string(i % 4) + ";" + std::to_string(i / 4);
    entries.push_back({builder.keep(key), builder.string(path)});
  }
  return builder.finish(builder.dictionary(entries));
}

}  // namespace bench
