#include "styles/style_matching.h"

#include "platform/foundation.h"

namespace prismal {

using platform::NSLog;
using platform::PropertyListView;

RuleVerdict PMJudgeRule(PropertyListView rule, const KeyIdentity& key, int controlState) {
  if (!rule.isArray()) {
    return {.message = "PM: Style must be the pair of condition and dictionary - Not Array"};
  }
  const auto pair = rule.items();
  if (pair.size() != 2) {
    return {.message = "PM: Style must be the pair of condition and dictionary - Not count 2"};
  }
  const auto condition = pair[0].string();
  if (!condition) return {.message = "PM: Style condition must be string."};
  // The value is looked at last: what is wrong with a rule that doesn't hold is not told.
  if (const auto failure = PMStyleConditionFailure(*condition, key, controlState)) {
    return {.failure = failure};
  }
  if (!pair[1].isDictionary()) return {.message = "PM: Style value must be dictionary."};
  return {.style = pair[1]};
}

std::vector<PropertyListView> PMGetMatchingStyles(PropertyListView rules, const KeyIdentity& key,
                                                  int controlState) {
  std::vector<PropertyListView> styles;
  if (!rules.isArray()) {
    NSLog("PM: Style information by visual style must be array: %@", {rules});
    return styles;
  }
  for (const PropertyListView rule : rules.items()) {
    const RuleVerdict verdict = PMJudgeRule(rule, key, controlState);
    if (verdict.style) styles.push_back(verdict.style);
    if (!verdict.message.empty()) NSLog(verdict.message);
  }
  return styles;
}

}  // namespace prismal
