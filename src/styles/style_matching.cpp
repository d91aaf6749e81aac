#include "styles/style_matching.h"

#include "platform/foundation.h"
#include "styles/condition.h"

namespace prismal {

using platform::NSLog;
using platform::PropertyListView;

namespace {

/// The style of `rule` when the rule is well formed and holds for the key, else null.
PropertyListView matchingStyle(PropertyListView rule, const KeyIdentity& key, int controlState) {
  if (!rule.isArray()) {
    NSLog("PM: Style must be the pair of condition and dictionary - Not Array");
    return {};
  }
  const auto pair = rule.items();
  if (pair.size() != 2) {
    NSLog("PM: Style must be the pair of condition and dictionary - Not count 2");
    return {};
  }
  const auto condition = pair[0].string();
  if (!condition) {
    NSLog("PM: Style condition must be string.");
    return {};
  }
  // The value is looked at last: what is wrong with a rule that doesn't hold is not told.
  if (!PMStyleConditionMatches(*condition, key, controlState)) return {};
  if (!pair[1].isDictionary()) {
    NSLog("PM: Style value must be dictionary.");
    return {};
  }
  return pair[1];
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
    if (const auto style = matchingStyle(rule, key, controlState)) styles.push_back(style);
  }
  return styles;
}

}  // namespace prismal
