#include <algorithm>
#include <cstdio>
#include <optional>

#include "check/library.h"
#include "check/theme.h"
#include "check/words.h"
#include "colors/color_cache.h"
#include "colors/color_string.h"
#include "colors/keyplane_gradient.h"
#include "host/keyboard/boards/visual_style.h"
#include "host/plist/utf8.h"
#include "support/characters.h"

namespace tools::check {

using platform::PropertyListView;

namespace {

constexpr std::size_t kDigits = 8;

bool isDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

std::string_view withoutMark(std::string_view text) {
  text = prismal::trimmed(text);
  if (text.starts_with('#')) text.remove_prefix(1);
  return text;
}

std::size_t charactersOf(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); ++count) text.remove_prefix(host::plist::firstUtf8Character(text).length);
  return count;
}

/// Why the library makes no colour of `value`.
std::string whyNoColor(PropertyListView value) {
  const auto text = value.string();
  if (!text) return std::string(typeOf(value)) + " in place of a colour string";
  const std::string_view digits = withoutMark(*text);
  const std::size_t count = charactersOf(digits);
  if (count == kDigits || count == 0) return inQuotes(*text) + " is no colour string";
  const std::string_view kind = std::ranges::all_of(digits, isDigit) ? "digit" : "character";
  return inQuotes(*text) + " has " + counted(count, kind) + ", a colour string needs 8";
}

std::string colorString(prismal::Rgba color) {
  char text[10];
  std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", color.red, color.green, color.blue,
                color.alpha);
  return text;
}

/// Only the length of a colour string is tested on a device, not its characters.
void checkDigits(Theme& theme, const Place& place, std::string_view text) {
  const auto color = prismal::parseColorString(text);
  if (!color || std::ranges::all_of(withoutMark(text), isDigit)) return;
  theme.findings.add("color-digits"_rule, place,
                     inQuotes(text) + " is not all digits; it is taken for " + colorString(*color));
}

void define(Theme& theme, std::string_view name, Place place) {
  const auto [first, isNew] = theme.colors.emplace(name, place);
  if (isNew) return;
  theme.findings.add("hidden-color"_rule, std::move(place),
                     inQuotes(name) + " is defined before, at " +
                         whereIs(first->second.path, first->second.position) +
                         "; the first definition counts");
}

void checkEntry(Theme& theme, PropertyListView entry, const std::string& path) {
  const std::string log = logOfColor(entry);
  const auto items = entry.items();
  if (items.size() != 2) {
    const std::string what =
        entry.isArray() ? counted(items.size(), "item") : std::string(typeOf(entry));
    return theme.findings.add("color-entry"_rule, theme.source.at(path, entry),
                              what + " in place of a pair, a name and a colour string", log);
  }
  const auto name = items[0].string();
  const Place color = theme.source.at(itemOf(path, 1), items[1]);
  if (name) theme.tried.emplace(*name);
  if (!log.empty()) {
    theme.findings.add("color-string"_rule, color, whyNoColor(items[1]), log);
  } else {
    checkDigits(theme, color, items[1].string().value_or(""));
  }
  if (!name) {
    theme.findings.add("color-name"_rule, theme.source.at(itemOf(path, 0), items[0]),
                       std::string(typeOf(items[0])) + " in place of a name");
  } else if (log.empty()) {
    define(theme, *name, theme.source.at(path, entry));
  }
}

void checkPair(Theme& theme, prismal::BackgroundColorNames pair) {
  const auto check = [&](std::string_view defined, std::string_view missing) {
    const auto found = theme.colors.find(defined);
    if (found == theme.colors.end() || theme.colors.contains(missing)) return;
    theme.findings.add("half-background"_rule, found->second,
                       inQuotes(defined) + " counts only together with " + inQuotes(missing) +
                           ", which isn't defined");
  };
  check(pair.start, pair.end);
  check(pair.end, pair.start);
}

/// The pairs of all visual styles, each once.
void checkPairs(Theme& theme) {
  std::set<std::string_view> checked;
  for (int style = host::boards::kFirstVisualStyle; style <= host::boards::kLastVisualStyle;
       ++style) {
    const auto pair = prismal::backgroundColorNames(style);
    if (checked.insert(pair.start).second) checkPair(theme, pair);
  }
}

}  // namespace

void checkColors(Theme& theme) {
  const PropertyListView section = theme.section(kColors);
  std::size_t i = 0;
  for (const PropertyListView entry : section.items()) {
    checkEntry(theme, entry, itemOf(std::string(kColors), i++));
  }
  checkPairs(theme);
}

}  // namespace tools::check
