#include "check/conditions.h"

#include <algorithm>
#include <string>
#include <vector>

#include "check/did_you_mean.h"
#include "check/words.h"
#include "styles/condition.h"

namespace tools::check {

namespace {

/// What a term tests of a key, for suggestions.
struct Term {
  std::string_view name;
  std::string (*value)(const KeyCase& key);
};

constexpr Term kTerms[] = {
    {"DisplayType=", [](const KeyCase& key) { return std::string(key.identity.displayType()); }},
    {"DisplayTypeHint=",
     [](const KeyCase& key) { return std::string(key.identity.displayTypeHint()); }},
    {"KeyName=", [](const KeyCase& key) { return std::string(key.identity.name().value_or("")); }},
    {"Row=", [](const KeyCase& key) { return std::string(key.identity.row()); }},
    {"ControlState=", [](const KeyCase& key) { return std::to_string(key.control_state); }},
};

/// Takes what stands before `separator`, or all of it, off the front of `rest`.
std::string_view takeUntil(char separator, std::string_view& rest, bool& isLast) {
  const auto end = rest.find(separator);
  const std::string_view taken = rest.substr(0, end);
  isLast = end == std::string_view::npos;
  rest.remove_prefix(isLast ? rest.size() : end + 1);
  return taken;
}

std::string suggestTerm(std::string_view name) {
  std::vector<std::string_view> names;
  for (const Term& term : kTerms) names.push_back(term.name);
  return didYouMean(name, names);
}

std::string suggestValue(std::string_view name, std::string_view value, const Boards& boards) {
  const auto* const term = std::ranges::find(kTerms, name, &Term::name);
  if (term == std::end(kTerms)) return "";
  std::set<std::string> values;
  for (const KeyCase& key : boards.cases()) values.insert(term->value(key));
  return didYouMean(value, std::vector<std::string_view>(values.begin(), values.end()));
}

}  // namespace

bool holds(std::string_view condition, const KeyCase& key) {
  return prismal::PMStyleConditionMatches(condition, key.identity, key.control_state);
}

bool ConditionCheck::check(const Place& place, std::string_view condition) {
  bool found = false;
  bool isLast = false;
  for (std::string_view rest = condition; !isLast;) {
    const std::string_view term = takeUntil(';', rest, isLast);
    if (term == "*") {
      if (isLast) return found;
      theme_.findings.add("ignored-terms"_rule, place,
                          "nobody looks at " + inQuotes(rest) + ": the condition ends with the *");
      return true;
    }
    found |= checkTerm(place, term);
  }
  return found;
}

bool ConditionCheck::checkTerm(const Place& place, std::string_view term) {
  const Rule& rule = "unknown-term"_rule;
  if (term.empty()) {
    theme_.findings.add(rule, place, "an empty term; it never holds");
    return true;
  }
  const auto equals = term.find('=');
  const std::string_view name = term.substr(0, equals == term.npos ? equals : equals + 1);
  if (equals == term.npos || !isKnown(name)) {
    const bool isFull = theme_.findings.isFull(rule);
    theme_.findings.add(
        rule, place,
        inQuotes(name) + " is no term; it never holds" + (isFull ? "" : suggestTerm(name)));
    return true;
  }
  bool found = false;
  bool isLast = false;
  for (std::string_view rest = term.substr(name.size()); !isLast;) {
    found |= checkValue(place, name, takeUntil(',', rest, isLast));
  }
  return found;
}

bool ConditionCheck::checkValue(const Place& place, std::string_view name, std::string_view value) {
  if (fitsSomewhere(name, value)) return false;
  const Rule& rule = "unknown-value"_rule;
  const bool isFull = theme_.findings.isFull(rule);
  theme_.findings.add(rule, place,
                      inQuotes(std::string(name).append(value)) + " fits no key of any board" +
                          (isFull ? "" : suggestValue(name, value, boards_)));
  return true;
}

/// A term is known when the library lets it hold for a key with all the values that the key has.
bool ConditionCheck::isKnown(std::string_view name) {
  if (const auto found = known_.find(name); found != known_.end()) return found->second;
  const KeyCase& key = boards_.cases().front();
  std::string condition(name);
  for (const Term& term : kTerms) condition += "," + term.value(key);
  return known_.emplace(name, holds(condition, key)).first->second;
}

bool ConditionCheck::fitsSomewhere(std::string_view name, std::string_view value) {
  const std::string term = std::string(name).append(value);
  if (const auto found = fits_.find(term); found != fits_.end()) return found->second;
  const bool fits =
      std::ranges::any_of(boards_.cases(), [&](const KeyCase& key) { return holds(term, key); });
  return fits_.emplace(term, fits).first->second;
}

}  // namespace tools::check
