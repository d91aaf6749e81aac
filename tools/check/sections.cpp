#include <algorithm>
#include <iterator>

#include "check/did_you_mean.h"
#include "check/library.h"
#include "check/theme.h"
#include "check/words.h"
#include "colors/color_cache.h"
#include "colors/gradient_cache.h"

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
  theme.findings.add("section-type"_rule, theme.source.at(std::string(name), section),
                     std::string(typeOf(section)) + " in place of " +
                         (isList ? "an array" : "a dictionary") +
                         "; the section counts for nothing",
                     log);
}

void checkRootKey(Theme& theme, const PropertyListEntry& entry) {
  if (isSection(entry) || isForEditors(entry)) return;
  theme.findings.add("unknown-section"_rule, theme.source.atKey(entryOf("", entry.key), entry),
                     inQuotes(entry.key) + " is no section" + didYouMean(entry.key, kSections));
}

void checkRepeatedKeys(Theme& theme) {
  for (const auto& repeated : theme.source.keys().repeated()) {
    theme.findings.add("duplicate-key"_rule, {entryOf("", repeated.key), repeated.position},
                       inQuotes(repeated.key) +
                           " stands once more in the same dictionary, on line " +
                           std::to_string(repeated.last.line) + "; only that one counts");
  }
}

}  // namespace

void checkSections(Theme& theme) {
  const auto entries = theme.source.list().entries();
  if (std::ranges::none_of(entries, isSection)) {
    theme.findings.add("no-section"_rule, theme.source.at("", theme.source.list()),
                       "none of " + std::string(kColors) + ", " + std::string(kGradients) + ", " +
                           std::string(kStyles) + " and " + std::string(kImages) +
                           " is there; this theme changes nothing");
  }
  for (const PropertyListEntry& entry : entries) checkRootKey(theme, entry);
  for (const std::string_view name : kSections) checkType(theme, name);
  checkRepeatedKeys(theme);
}

}  // namespace tools::check
