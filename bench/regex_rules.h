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

/// The line that says what a key answers.
std::string lineOf(const KeyTexts& key);

/// A peer that keeps nothing of the rules: at every request it makes an expression of the standard
/// library of each condition, and matches it against the line that says all of a key.
std::vector<platform::PropertyListView> matchByRegexOfText(platform::PropertyListView rules,
                                                           const std::string& line);

/// A peer that at every request takes the conditions apart anew, by expressions that were compiled
/// once.
std::vector<platform::PropertyListView> matchByWalkingRegex(platform::PropertyListView rules,
                                                            const KeyTexts& key);

/// A peer that keeps an expression a rule, compiled beforehand, and matches each against one line
/// that says all of a key.
class CompiledRegexRules {
 public:
  /// The styles live as long as the list.
  explicit CompiledRegexRules(platform::PropertyListView rules);

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
