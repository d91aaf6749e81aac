#include "styles/style_matching.h"

#include <cstddef>

#include "platform/foundation.h"
#include "styles/condition_walk.h"

namespace prismal {

using platform::NSLog;
using platform::PropertyListView;

namespace {

/// The condition of a rule; none when the rule is malformed.
std::optional<std::string_view> conditionOf(PropertyListView rule) {
  const auto pair = rule.items();
  return pair.size() == 2 ? pair[0].string() : std::nullopt;
}

/// What is wrong with a rule that has no condition.
std::string_view complaintAbout(PropertyListView rule) {
  if (!rule.isArray()) return "PM: Style must be the pair of condition and dictionary - Not Array";
  if (rule.items().size() != 2) {
    return "PM: Style must be the pair of condition and dictionary - Not count 2";
  }
  return "PM: Style condition must be string.";
}

/// The verdict on a rule whose condition holds. Its value is looked at no sooner: what is wrong
/// with a rule that doesn't hold is not told.
RuleVerdict verdictOn(PropertyListView rule) {
  const PropertyListView value = rule.items()[1];
  if (value.isDictionary()) return {.style = value};
  return {.message = "PM: Style value must be dictionary."};
}

}  // namespace

RuleVerdict PMJudgeRule(PropertyListView rule, const KeyIdentity& key, int controlState) {
  const auto condition = conditionOf(rule);
  if (!condition) return {.message = complaintAbout(rule)};
  const auto failure = PMStyleConditionFailure(*condition, key, controlState);
  return failure ? RuleVerdict{.failure = failure} : verdictOn(rule);
}

namespace {

/// Flattened: the walk has a place for all it knows in a register only when none of its steps is a
/// call.
[[gnu::flatten]] void addIfItHolds(std::vector<PropertyListView>& styles, PropertyListView rule,
                                   const KeyIdentity& key, int controlState) {
  const auto condition = conditionOf(rule);
  if (!condition) return NSLog(complaintAbout(rule));
  if (!ConditionWalk(*condition).holds(key, controlState)) return;
  const RuleVerdict verdict = verdictOn(rule);
  if (!verdict.style) return NSLog(verdict.message);
  // Few rules of a list hold for one key: mostly this is the only memory that is asked for.
  constexpr std::size_t kFew = 8;
  if (styles.empty()) styles.reserve(kFew);
  styles.push_back(verdict.style);
}

}  // namespace

std::vector<PropertyListView> PMGetMatchingStyles(PropertyListView rules, const KeyIdentity& key,
                                                  int controlState) {
  std::vector<PropertyListView> styles;
  if (!rules.isArray()) {
    NSLog("PM: Style information by visual style must be array: %@", {rules});
    return styles;
  }
  for (const PropertyListView rule : rules.items()) {
    addIfItHolds(styles, rule, key, controlState);
  }
  return styles;
}

}  // namespace prismal
