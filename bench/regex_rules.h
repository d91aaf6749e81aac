#pragma once

#include <array>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/property_list.h"
#include "rule_terms.h"

namespace bench {

using KeyTexts = std::array<std::string_view, kSubjects>;

/// A peer that keeps nothing of the rules either: at every request it takes the conditions apart
/// anew, by expressions of the standard library that were compiled once.
std::vector<platform::PropertyListView> matchByWalkingRegex(platform::PropertyListView rules,
                                                            const KeyTexts& key);

/// A peer that keeps an expression a rule, compiled beforehand, and matches each against one line
/// that says all of a key.
class CompiledRegexRules {
 public:
  /// The styles live as long as the list.
  explicit CompiledRegexRules(platform::PropertyListView rules);

  /// The line that says what a key answers.
  static std::string line(const KeyTexts& key);

  /// The style dictionaries of all rules that hold, in order.
  std::vector<platform::PropertyListView> matching(const std::string& line) const;

 private:
  struct Rule {
    std::regex expression;
    platform::PropertyListView style;
  };
  std::vector<Rule> rules_;
};

}  // namespace bench
