#include "check/conditions.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "check/did_you_mean.h"
#include "check/words.h"
#include "styles/condition.h"
#include "support/characters.h"

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

/// The numbers that stand for states, in the words that authors try in their place.
struct StateWord {
  std::string_view word;
  std::string_view number;
};
constexpr StateWord kStateWords[] = {
    {"Pressed", "1"}, {"Highlighted", "1"}, {"Disabled", "2"}, {"Normal", "3"}, {"Enabled", "3"},
    {"Rest", "3"},    {"Shift", "6"},       {"On", "6"},       {"Locked", "7"}, {"CapsLock", "7"},
};

/// Takes what stands before `separator`, or all of it, off the front of `rest`.
std::string_view takeUntil(char separator, std::string_view& rest, bool& isLast) {
  const auto end = rest.find(separator);
  const std::string_view taken = rest.substr(0, end);
  isLast = end == std::string_view::npos;
  rest.remove_prefix(isLast ? rest.size() : end + 1);
  return taken;
}

using Texts = std::vector<std::string_view>;

std::string withoutDigits(std::string_view text) {
  std::string rest(text);
  std::erase_if(rest, [](char c) { return c >= '0' && c <= '9'; });
  return rest;
}

/// The value that begins with `written` and a hyphen; of several the one with which all others
/// begin, if any.
std::optional<std::string_view> beginningWith(std::string_view written, const Texts& values) {
  const auto begins = [&](std::string_view value) {
    return !written.empty() && value.size() > written.size() && value.starts_with(written) &&
           value[written.size()] == '-';
  };
  // The shortest stands first among texts that begin alike.
  const auto found = std::ranges::find_if(values, begins);
  const auto isOther = [&](std::string_view value) {
    return begins(value) && !value.starts_with(*found);
  };
  if (found == values.end() || std::ranges::any_of(values, isOther)) return std::nullopt;
  return *found;
}

/// A word for a state, whatever its case.
std::optional<std::string_view> stateCalled(std::string_view written) {
  const auto found = std::ranges::find_if(kStateWords, [&](const StateWord& state) {
    return std::ranges::equal(state.word, written, {}, prismal::lowerCase, prismal::lowerCase);
  });
  if (found == std::end(kStateWords)) return std::nullopt;
  return found->number;
}

/// "; there are 1, 2 and 3", of few values.
std::string possible(const Texts& values) {
  constexpr std::size_t kMost = 8;
  if (values.size() > kMost) return "";
  std::string text;
  for (std::size_t i = 0; i < values.size(); ++i) {
    text += i == 0 ? "; there are " : i + 1 == values.size() ? " and " : ", ";
    text += values[i];
  }
  return text;
}

}  // namespace

bool holds(std::string_view condition, const KeyCase& key) {
  return prismal::PMStyleConditionMatches(condition, key.identity, key.control_state);
}

ConditionCheck::Outcome ConditionCheck::check(const ConditionPlace& place,
                                              std::string_view condition) {
  Outcome outcome;
  bool isLast = false;
  for (std::string_view rest = condition; !isLast;) {
    const std::string_view term = takeUntil(';', rest, isLast);
    if (term == "*") {
      outcome.meant += "*";
      if (isLast) return outcome;
      outcome.isExplained = true;
      theme_.findings.add("ignored-terms"_rule, place.of(term),
                          "nobody looks at " + inQuotes(rest) + ": the condition ends with the *");
      return outcome;
    }
    const auto meant = checkTerm(place.of(term), term);
    outcome.isExplained |= meant != term;
    if (meant) outcome.meant += *meant + ";";
  }
  if (!outcome.meant.empty()) outcome.meant += "*";
  return outcome;
}

std::optional<std::string> ConditionCheck::checkTerm(const Place& place, std::string_view term) {
  const Rule& rule = "unknown-term"_rule;
  if (term.empty()) {
    theme_.findings.add(rule, place, "an empty term; it never holds");
    return std::nullopt;
  }
  const auto equals = term.find('=');
  std::string_view name = term.substr(0, equals == term.npos ? equals : equals + 1);
  const std::string_view values = term.substr(name.size());
  if (equals == term.npos || !isKnown(name)) {
    const auto meant = nearestTerm(name);
    theme_.findings.add(rule, place,
                        inQuotes(name) + " is no term; it never holds" + asQuestion(meant));
    if (!meant || equals == term.npos) return std::nullopt;
    return checkValues(nullptr, *meant, values);
  }
  return checkValues(&place, name, values);
}

std::optional<std::string> ConditionCheck::checkValues(const Place* place, std::string_view name,
                                                       std::string_view values) {
  std::string meant;
  bool isLast = false;
  for (std::string_view rest = values; !isLast;) {
    const std::string_view value = takeUntil(',', rest, isLast);
    if (const auto known = checkValue(place, name, value)) {
      meant.append(meant.empty() ? name : ",").append(*known);
    }
  }
  if (meant.empty()) return std::nullopt;
  return meant;
}

std::optional<std::string> ConditionCheck::checkValue(const Place* place, std::string_view name,
                                                      std::string_view value) {
  if (fitsSomewhere(name, value)) return std::string(value);
  const auto [meant, hint] = suggest(name, value);
  if (place) {
    theme_.findings.add(
        "unknown-value"_rule, *place,
        inQuotes(std::string(name).append(value)) + " fits no key of any board" + hint);
  }
  return meant;
}

std::optional<std::string_view> ConditionCheck::nearestTerm(std::string_view name) {
  Texts names;
  for (const Term& term : kTerms) names.push_back(term.name);
  return theme_.suggestions.nearest(name, names);
}

ConditionCheck::Suggestion ConditionCheck::suggest(std::string_view name, std::string_view value) {
  const auto* const term = std::ranges::find(kTerms, name, &Term::name);
  if (term == std::end(kTerms)) return {};
  std::set<std::string> all;
  for (const KeyCase& key : boards_.cases()) all.insert(term->value(key));
  all.erase("");
  const Texts values(all.begin(), all.end());
  auto meant = name == "ControlState=" ? stateCalled(value) : std::nullopt;
  if (!meant) meant = theme_.suggestions.nearest(value, values);
  // Another number is no slip of the finger, and any other would be as near.
  if (meant && withoutDigits(*meant) == withoutDigits(value)) meant.reset();
  if (!meant) meant = beginningWith(value, values);
  if (!meant) return {{}, possible(values)};
  return {std::string(*meant), asQuestion(meant)};
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
