#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/property_list.h"
#include "styles/condition.h"
#include "styles/key_identity.h"

namespace prismal {

/// What a rule of a list is to a key: exactly one of the three is there.
struct RuleVerdict {
  /// Its style dictionary, which lives as long as the list; null when it doesn't apply.
  platform::PropertyListView style = {};
  /// Why its condition doesn't hold; a part of the rule's text.
  std::optional<FailedTerm> failure = std::nullopt;
  /// What is wrong with a malformed rule, as it is logged; else empty. Lives for ever.
  std::string_view message = {};
};

/// Judges one rule; logs nothing, allocates nothing.
RuleVerdict PMJudgeRule(platform::PropertyListView rule, const KeyIdentity& key, int controlState);

/// The style dictionaries of all rules of `rules` whose condition holds for the key, in the order
/// of the list. Malformed rules are logged, each time anew, and skipped. The dictionaries live as
/// long as the list.
std::vector<platform::PropertyListView> PMGetMatchingStyles(platform::PropertyListView rules,
                                                            const KeyIdentity& key,
                                                            int controlState);

}  // namespace prismal
