#include "check/styles.h"

#include <algorithm>
#include <set>

#include "check/conditions.h"
#include "check/device_theme.h"
#include "check/did_you_mean.h"
#include "check/rule_check.h"
#include "check/words.h"
#include "styles/style_matching.h"

namespace tools::check {

using platform::PropertyListEntry;
using platform::PropertyListView;

namespace {

// A thousand rules is much for a theme. On a device every rule is tried for every key that is
// drawn.
constexpr std::size_t kMostRules = 4000;
constexpr std::size_t kMostConditionBytes = std::size_t{256} << 10U;

std::set<std::string, std::less<>> visualStyles(const Boards& boards) {
  std::set<std::string, std::less<>> names;
  for (const Keyplane& keyplane : boards.keyplanes()) names.emplace(keyplane.style);
  return names;
}

bool isTooMuch(const Theme& theme) {
  std::size_t rules = 0;
  std::size_t bytes = 0;
  for (const PropertyListEntry& list : theme.section(kStyles).entries()) {
    rules += list.value.items().size();
    for (const PropertyListView rule : list.value.items()) {
      if (isSound(rule)) bytes += rule.items()[0].string()->size();
    }
  }
  return rules > kMostRules || bytes > kMostConditionBytes;
}

/// Whether some keyplane gets the rules under `name`.
bool isRead(const Boards& boards, std::string_view name) {
  return std::ranges::any_of(boards.keyplanes(),
                             [&](const Keyplane& keyplane) { return keyplane.list == name; });
}

/// The rules of `list`, had they stood under `name`.
void buryList(PropertyListView list, std::string_view name, std::vector<DeadRule>& dead) {
  for (const PropertyListView rule : list.items()) {
    if (!isSound(rule)) continue;
    const auto items = rule.items();
    dead.push_back({std::string(name),
                    DeadRule::kLast,
                    {std::string(*items[0].string())},
                    partsSetBy(items[1])});
  }
}

void tellUnreadList(Theme& theme, const Boards& boards, const PropertyListEntry& entry,
                    std::vector<DeadRule>& dead) {
  const Place place = theme.source.atKey(entryOf(std::string(kStyles), entry.key), entry);
  const auto styles = visualStyles(boards);
  if (styles.contains(entry.key)) {
    return theme.findings.add("unread-style"_rule, place,
                              "rules under " + inQuotes(entry.key) +
                                  " are never read; its keyplanes take those of another style");
  }
  const std::vector<std::string_view> names(styles.begin(), styles.end());
  const auto meant = theme.suggestions.nearest(entry.key, names);
  if (meant) buryList(entry.value, *meant, dead);
  theme.findings.add("unknown-style"_rule, place,
                     inQuotes(entry.key) + " is no visual style" + asQuestion(meant));
}

void checkList(Theme& theme, const Boards& boards, const PropertyListEntry& entry,
               ConditionCheck* conditions, RuleUse& use) {
  // Whatever is wrong with rules that nobody reads, the library never meets it.
  if (!isRead(boards, entry.key)) return tellUnreadList(theme, boards, entry, use.dead);
  const std::string path = entryOf(std::string(kStyles), entry.key);
  if (!entry.value.isArray()) {
    const KeyCase& key = boards.cases().front();
    const std::string log =
        logOf([&] { prismal::PMGetMatchingStyles(entry.value, key.identity, key.control_state); });
    use.dead.push_back({std::string(entry.key), 0, {"*"}, kAllParts});
    return theme.findings.add("style-list"_rule, theme.source.at(path, entry.value),
                              std::string(typeOf(entry.value)) + " in place of an array of rules",
                              log);
  }
  RuleCheck rules(theme, boards, conditions, entry.key, use.dead);
  std::vector<bool> isExplained;
  for (const PropertyListView rule : entry.value.items()) {
    isExplained.push_back(rules.check(rule, isExplained.size()));
  }
  if (conditions) checkUse(theme, boards, entry.key, entry.value, use, isExplained);
}

/// The rules of a section that is lost.
void buryStyles(const Theme& theme, std::vector<DeadRule>& dead) {
  if (!theme.lost.contains(kStyles)) return;
  const PropertyListView section = theme.section(kStyles);
  if (section && !section.isDictionary()) {
    return dead.push_back({"", DeadRule::kLast, {"*"}, kAllParts});
  }
  for (const auto& other : theme.source.list().entries()) {
    if (other.key == kStyles) continue;
    for (const auto& list : other.value.entries()) buryList(list.value, list.key, dead);
  }
}

}  // namespace

bool checkStyles(Theme& theme, const Boards& boards, RuleUse& use) {
  const PropertyListView styles = theme.section(kStyles);
  const bool isTooMany = isTooMuch(theme);
  if (isTooMany) {
    theme.findings.add("too-many-rules"_rule, theme.source.at(std::string(kStyles), styles),
                       "more than " + std::to_string(kMostRules) +
                           " rules, or conditions too long; which keys they match isn't checked");
  }
  LastWord nobody;
  nobody.fill(-1);
  if (!isTooMany) use.words.assign(boards.cases().size(), nobody);
  ConditionCheck conditions(theme, boards);
  for (const PropertyListEntry& entry : styles.entries()) {
    checkList(theme, boards, entry, isTooMany ? nullptr : &conditions, use);
  }
  buryStyles(theme, use.dead);
  return !isTooMany;
}

}  // namespace tools::check
