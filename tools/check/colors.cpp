#include <algorithm>
#include <cstdio>
#include <optional>

#include "check/library.h"
#include "check/names.h"
#include "check/theme.h"
#include "check/words.h"
#include "colors/color_cache.h"
#include "colors/color_string.h"
#include "colors/keyplane_gradient.h"
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
void checkDigits(Theme& theme, const Place& place, std::string_view name, std::string_view text) {
  const auto color = prismal::parseColorString(text);
  if (!color || std::ranges::all_of(withoutMark(text), isDigit)) return;
  theme.doubtful.emplace(name);
  theme.findings.add("color-digits"_rule, place,
                     inQuotes(text) + " is not all digits; it is taken for " + colorString(*color));
}

void define(Theme& theme, std::string_view name, const Definition& definition) {
  const auto [first, isNew] = theme.colors.emplace(name, definition);
  if (isNew) return;
  theme.findings.add("hidden-color"_rule, definition.name,
                     inQuotes(name) + " is defined before, at " + whereIs(first->second.name) +
                         "; the first definition counts");
}

void checkEntry(Theme& theme, PropertyListView entry, const std::string& path) {
  const std::string log = logOfColor(entry);
  const auto items = entry.items();
  if (items.size() != 2) {
    const std::string what =
        entry.isArray() ? counted(items.size(), "item") : std::string(typeOf(entry));
    noteAttempts(theme, Kind::color, entry);
    return theme.findings.add("color-entry"_rule, theme.source.at(path, entry),
                              what + " in place of a pair, a name and a colour string", log);
  }
  const auto name = items[0].string();
  const Place color = theme.source.at(itemOf(path, 1), items[1]);
  if (name) theme.tried[Kind::color].emplace(*name);
  if (!log.empty()) {
    theme.findings.add("color-string"_rule, color, whyNoColor(items[1]), log);
  } else {
    checkDigits(theme, color, name.value_or(""), items[1].string().value_or(""));
  }
  if (!name) {
    ++theme.nameless;
    theme.findings.add("color-name"_rule, theme.source.at(itemOf(path, 0), items[0]),
                       std::string(typeOf(items[0])) + " in place of a name");
  } else if (log.empty()) {
    define(theme, *name, {theme.source.at(itemOf(path, 0), items[0]), color});
  }
}

void checkPair(Theme& theme, prismal::BackgroundColorNames pair) {
  const auto check = [&](std::string_view defined, std::string_view missing) {
    const auto found = theme.colors.find(defined);
    if (found == theme.colors.end() || theme.colors.contains(missing)) return;
    // What is wrong with the other one has been told where it stands.
    const bool isTold = theme.hasTried(Kind::color, missing) || theme.doubtful.contains(missing) ||
                        theme.nameless > 0;
    theme.doubtful.emplace(defined);
    if (isTold) return;
    theme.findings.add("half-background"_rule, found->second.name,
                       inQuotes(defined) + " counts only together with " + inQuotes(missing) +
                           ", which isn't defined");
  };
  check(pair.start, pair.end);
  check(pair.end, pair.start);
}

}  // namespace

void checkColors(Theme& theme) {
  const PropertyListView section = theme.section(kColors);
  std::size_t i = 0;
  for (const PropertyListView entry : section.items()) {
    checkEntry(theme, entry, itemOf(std::string(kColors), i++));
  }
}

void checkPairs(Theme& theme) {
  for (const auto& pair : backgroundPairs()) checkPair(theme, pair);
}

}  // namespace tools::check
