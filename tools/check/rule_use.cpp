#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "check/conditions.h"
#include "check/device_theme.h"
#include "check/styles.h"
#include "check/words.h"

namespace tools::check {

using platform::PropertyListView;

namespace {

constexpr std::string_view kSecondTextColor = "SecondaryTextColor";

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

/// What a rule sets that a key has.
Parts partsOn(const Use& use, const KeyCase& key) {
  return key.has_second_text ? use.parts : use.parts & ~only(Part::second_text);
}

/// Every rule for one case, from first to last.
void applyAll(std::vector<Use>& uses, PropertyListView list, const KeyCase& key, LastWord& word) {
  for (std::size_t i = 0; i < uses.size(); ++i) {
    if (!isSound(list.items()[i]) || !holds(uses[i].condition, key)) continue;
    uses[i].matches = true;
    for (unsigned part = 0; part < word.size(); ++part) {
      if (partsOn(uses[i], key) >> part & 1U) word[part] = static_cast<std::int32_t>(i);
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
      if (partsOn(use, cases[i]) >> part & 1U) rules.insert(words[i][part]);
    }
  }
  return rules;
}

/// The conditions that come of `condition` when one of its terms is left out; none when it has more
/// terms than anybody writes, of each of which a copy would be made.
std::vector<std::string> withoutOneTerm(std::string_view condition) {
  constexpr std::ptrdiff_t kMostTerms = 16;
  if (std::ranges::count(condition, ';') >= kMostTerms) return {};
  std::vector<std::string> conditions;
  for (std::size_t start = 0; start <= condition.size();) {
    const auto end = std::min(condition.find(';', start), condition.size());
    std::string rest(condition.substr(0, start));
    if (end < condition.size()) rest += std::string(condition.substr(end + 1)) + ";";
    conditions.push_back(rest + "*");
    start = end + 1;
  }
  return conditions;
}

}  // namespace

void checkUse(Theme& theme, const Boards& boards, std::string_view name, PropertyListView list,
              RuleUse& use, const std::vector<bool>& isExplained) {
  LastWords& words = use.words;
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
      use.dead.push_back({std::string(name), i, withoutOneTerm(uses[i].condition), uses[i].parts});
      continue;
    }
    if (uses[i].parts == 0) continue;
    const auto winners = overriding(uses[i], cases, name, words);
    if (winners.empty()) {
      const PropertyListView style = list.items()[i].items()[1];
      const std::string property = entryOf(itemOf(itemOf(path, i), 1), kSecondTextColor);
      theme.findings.add("property-without-effect"_rule,
                         theme.source.at(property, style.objectForKey(kSecondTextColor)),
                         "none of the keys that the rule matches has a second text");
      continue;
    }
    std::vector<std::string> others;
    for (const std::int32_t rule : winners) {
      const Place place = placeOf(static_cast<std::size_t>(rule));
      others.push_back(whereIs(place));
    }
    theme.findings.add("rule-overridden"_rule, placeOf(i),
                       "all that it sets is set again for the same keys, by " +
                           std::string(others.size() == 1 ? "the rule" : "rules") + " at " +
                           listed(others));
  }
}

}  // namespace tools::check
