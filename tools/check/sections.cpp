#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_map>

#include "check/did_you_mean.h"
#include "check/library.h"
#include "check/names.h"
#include "check/theme.h"
#include "check/words.h"
#include "colors/color_cache.h"
#include "colors/gradient_cache.h"
#include "suggestion.h"

namespace tools::check {

using platform::PropertyListEntry;
using platform::PropertyListView;

namespace {

constexpr std::string_view kSections[] = {kColors, kGradients, kStyles, kImages};

/// Where an editor finds the schema of a theme that is written as JSON.
bool isForEditors(const PropertyListEntry& entry) {
  return entry.key == "$schema" && entry.value.isString();
}

bool isSection(const PropertyListEntry& entry) {
  return std::ranges::find(kSections, entry.key) != std::end(kSections);
}

/// What the library does with the two sections that it tells of.
void (*rebuildOf(std::string_view section))(PropertyListView) {
  if (section == kColors) return prismal::PMRebuildColorCache;
  return section == kGradients ? prismal::PMRebuildLinearGradientCache : nullptr;
}

void checkType(Theme& theme, std::string_view name) {
  const PropertyListView section = theme.section(name);
  const bool isList = rebuildOf(name) != nullptr;
  if (!section || (isList ? section.isArray() : section.isDictionary())) return;
  const std::string log = isList ? logOfSection(section, rebuildOf(name)) : "";
  theme.lost.emplace(name);
  if (isList) noteAttempts(theme, name == kColors ? Kind::color : Kind::gradient, section);
  theme.findings.add("section-type"_rule, theme.source.at(std::string(name), section),
                     std::string(typeOf(section)) + " in place of " +
                         (isList ? "an array" : "a dictionary") +
                         "; the section counts for nothing",
                     log);
}

/// The section that an unknown key of the root is likely to mean.
std::optional<std::string_view> meantBy(std::string_view key) {
  if (key == "CustomGradient" || key == "CustomGradients") return kGradients;
  return nearest(key, kSections);
}

void checkRootKey(Theme& theme, const PropertyListEntry& entry) {
  if (isSection(entry) || isForEditors(entry)) return;
  const auto meant = meantBy(entry.key);
  if (meant) theme.lost.emplace(*meant);
  for (const Kind kind : {Kind::color, Kind::gradient}) noteAttempts(theme, kind, entry.value);
  theme.findings.add("unknown-section"_rule, theme.source.atKey(entryOf("", entry.key), entry),
                     inQuotes(entry.key) + " is no section" + asQuestion(meant));
}

/// Fills in the paths of entries below `value`.
using Paths = std::unordered_map<const PropertyListEntry*, std::string>;
void findPaths(PropertyListView value, const std::string& path, Paths& wanted) {
  std::size_t i = 0;
  for (const PropertyListView item : value.items()) findPaths(item, itemOf(path, i++), wanted);
  for (const PropertyListEntry& entry : value.entries()) {
    const std::string below = entryOf(path, entry.key);
    if (const auto found = wanted.find(&entry); found != wanted.end()) found->second = below;
    findPaths(entry.value, below, wanted);
  }
}

void checkRepeatedKeys(Theme& theme) {
  const auto& keys = theme.source.keys();
  if (keys.repeated().empty()) return;
  Paths paths;
  for (const auto& repeated : keys.repeated()) paths[repeated.last];
  findPaths(theme.source.list(), "", paths);
  for (const auto& repeated : keys.repeated()) {
    const std::string& path = paths[repeated.last];
    // What counts for nothing itself has no path.
    if (path.empty()) continue;
    const auto line = keys.of(repeated.last->key).line;
    theme.findings.add("duplicate-key"_rule, {path, repeated.position},
                       inQuotes(repeated.key) + " stands once more in the same dictionary" +
                           (line > 0 ? ", on line " + std::to_string(line) : "") +
                           "; only the last one counts");
  }
}

}  // namespace

void checkSections(Theme& theme) {
  const auto entries = theme.source.list().entries();
  for (const PropertyListEntry& entry : entries) checkRootKey(theme, entry);
  // One that is merely misspelt has been told.
  if (theme.lost.empty() && std::ranges::none_of(entries, isSection)) {
    theme.findings.add("no-section"_rule, theme.source.at("", theme.source.list()),
                       "none of " + std::string(kColors) + ", " + std::string(kGradients) + ", " +
                           std::string(kStyles) + " and " + std::string(kImages) +
                           " is there; this theme changes nothing");
  }
  for (const std::string_view name : kSections) checkType(theme, name);
  checkRepeatedKeys(theme);
}

}  // namespace tools::check
