#include "check/library.h"
#include "check/names.h"
#include "check/theme.h"
#include "check/words.h"

namespace tools::check {

using platform::PropertyListView;

namespace {

constexpr std::size_t kMostItems = 3;

void define(Theme& theme, std::string_view name, Definition definition) {
  const auto [last, isNew] = theme.gradients.emplace(name, definition);
  if (isNew) return;
  theme.findings.add("hidden-gradient"_rule, last->second.name,
                     inQuotes(name) + " is defined again, at " + whereIs(definition.name) +
                         "; the last definition counts");
  last->second = std::move(definition);
}

/// What is wrong with the items of an entry of which the library has logged `log`.
void tellWrongTypes(Theme& theme, PropertyListView entry, const std::string& path,
                    const std::string& log) {
  const auto items = entry.items();
  for (std::size_t i = 0; i < items.size() && i < kMostItems; ++i) {
    if (items[i].isString()) continue;
    const Place place = theme.source.at(itemOf(path, i), items[i]);
    const std::string what(typeOf(items[i]));
    if (i > 0) {
      return theme.findings.add("gradient-color"_rule, place, what + " in place of a colour's name",
                                log);
    }
    ++theme.nameless;
    return theme.findings.add("gradient-name"_rule, place, what + " in place of a name", log);
  }
}

void checkEntry(Theme& theme, PropertyListView entry, const std::string& path) {
  const std::string log = logOfGradient(entry);
  const auto items = entry.items();
  const Place place = theme.source.at(path, entry);
  if (items.size() < 2) {
    const std::string what =
        entry.isArray() ? counted(items.size(), "item") : std::string(typeOf(entry));
    noteAttempts(theme, Kind::gradient, entry);
    return theme.findings.add("gradient-entry"_rule, place,
                              what + " in place of a name and one or two colours", log);
  }
  if (const auto name = items[0].string()) theme.tried[Kind::gradient].emplace(*name);
  if (!log.empty()) return tellWrongTypes(theme, entry, path, log);
  if (items.size() > kMostItems) {
    theme.findings.add("gradient-items"_rule,
                       theme.source.at(itemOf(path, kMostItems), items[kMostItems]),
                       counted(items.size() - 1, "colour") + "; only the first two count");
  }
  Definition definition{theme.source.at(itemOf(path, 0), items[0]), place};
  for (std::size_t i = 1; i < items.size() && i < kMostItems; ++i) {
    const std::string_view color = *items[i].string();
    definition.colors.emplace_back(color);
    useName(theme, Kind::color, theme.source.at(itemOf(path, i), items[i]), "a gradient", color);
  }
  define(theme, *items[0].string(), std::move(definition));
}

}  // namespace

void checkGradients(Theme& theme) {
  std::size_t i = 0;
  for (const PropertyListView entry : theme.section(kGradients).items()) {
    checkEntry(theme, entry, itemOf(std::string(kGradients), i++));
  }
}

}  // namespace tools::check
