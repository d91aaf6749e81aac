#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/boards.h"
#include "check/conditions.h"
#include "check/styles.h"
#include "check/theme.h"

namespace tools::check {

/// Checks the rules of one list, each for itself.
class RuleCheck {
 public:
  /// `conditions` may be null: conditions aren't checked then. `dead` takes the rules that don't
  /// set what they were meant to set.
  RuleCheck(Theme& theme, const Boards& boards, ConditionCheck* conditions, std::string_view list,
            std::vector<DeadRule>& dead)
      : theme_(theme), boards_(boards), conditions_(conditions), list_(list), dead_(dead) {}

  /// Whether something was told that explains why the rule has no effect.
  bool check(platform::PropertyListView rule, std::size_t index);

 private:
  void tellUnsound(platform::PropertyListView rule, const std::string& path);
  void tellNothing(platform::PropertyListView style, const std::string& path);
  /// A property that a later one of the same rule takes back.
  void tellTakenAway(platform::PropertyListView style, const std::string& path);
  /// What was meant to be set and isn't, when something is wrong.
  std::optional<Parts> checkProperty(const platform::PropertyListEntry& property,
                                     const std::string& style);
  /// What is set by a string is the name of something.
  void checkName(const Place& place, const platform::PropertyListEntry& property, Parts parts);

  Theme& theme_;
  const Boards& boards_;
  ConditionCheck* conditions_;
  std::string list_;
  std::vector<DeadRule>& dead_;
};

}  // namespace tools::check
