#include <algorithm>
#include <set>

#include "check/conditions.h"
#include "check/device_theme.h"
#include "check/styles.h"
#include "check/words.h"

namespace tools::check {

using platform::PropertyListView;

namespace {

struct Use {
  std::string_view condition;  // none of an unsound rule
  Parts parts = 0;
  bool matches = false;
  bool hasLastWord = false;
};

std::vector<Use> usesOf(PropertyListView list) {
  std::vector<Use> uses;
  for (const PropertyListView rule : list.items()) {
    const bool sound = isSound(rule);
    uses.push_back(
        {sound ? *rule.items()[0].string() : "", sound ? partsSetBy(rule.items()[1]) : 0});
  }
  return uses;
}

/// Every rule for one case, from first to last.
void applyAll(std::vector<Use>& uses, PropertyListView list, const KeyCase& key, LastWord& word) {
  for (std::size_t i = 0; i < uses.size(); ++i) {
    if (!isSound(list.items()[i]) || !holds(uses[i].condition, key)) continue;
    uses[i].matches = true;
    for (unsigned part = 0; part < word.size(); ++part) {
      if (uses[i].parts >> part & 1U) word[part] = static_cast<std::int32_t>(i);
    }
  }
  for (const std::int32_t rule : word) {
    if (rule >= 0) uses[static_cast<std::size_t>(rule)].hasLastWord = true;
  }
}

/// The rules that have the last word on what `use` sets.
std::set<std::int32_t> overriding(const Use& use, std::span<const KeyCase> cases,
                                  std::string_view name, const LastWords& words) {
  std::set<std::int32_t> rules;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    if (cases[i].list != name || !holds(use.condition, cases[i])) continue;
    for (unsigned part = 0; part < words[i].size(); ++part) {
      if (use.parts >> part & 1U) rules.insert(words[i][part]);
    }
  }
  return rules;
}

}  // namespace

void checkUse(Theme& theme, const Boards& boards, std::string_view name, PropertyListView list,
              LastWords& words, const std::vector<bool>& isExplained) {
  const auto cases = boards.cases();
  const auto isUnderList = [&](const KeyCase& key) { return key.list == name; };
  if (std::ranges::none_of(cases, isUnderList)) return;
  std::vector<Use> uses = usesOf(list);
  for (std::size_t i = 0; i < cases.size(); ++i) {
    if (isUnderList(cases[i])) applyAll(uses, list, cases[i], words[i]);
  }
  const std::string path = entryOf(std::string(kStyles), name);
  const auto placeOf = [&](std::size_t rule) {
    return theme.source.at(itemOf(path, rule), list.items()[rule]);
  };
  for (std::size_t i = 0; i < uses.size(); ++i) {
    if (isExplained[i] || uses[i].hasLastWord) continue;
    if (!uses[i].matches) {
      theme.findings.add(
          "rule-never-matches"_rule, placeOf(i),
          inQuotes(uses[i].condition) + " holds for no key of the boards that take these rules");
      continue;
    }
    if (uses[i].parts == 0 || theme.findings.isFull("rule-overridden"_rule)) continue;
    std::vector<std::string> others;
    for (const std::int32_t rule : overriding(uses[i], cases, name, words)) {
      const Place place = placeOf(static_cast<std::size_t>(rule));
      others.push_back(whereIs(place.path, place.position));
    }
    theme.findings.add("rule-overridden"_rule, placeOf(i),
                       "all that it sets is set again for the same keys, by " +
                           std::string(others.size() == 1 ? "the rule" : "rules") + " at " +
                           listed(others));
  }
}

}  // namespace tools::check
