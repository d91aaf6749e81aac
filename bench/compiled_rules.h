#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/property_list.h"
#include "rule_terms.h"

namespace bench {

/// A peer: rules compiled to integers beforehand. Every text that occurs has a number, and a term
/// is a few numbers to compare with one of the key's.
class CompiledRules {
 public:
  using Key = std::array<std::uint32_t, kSubjects>;

  /// The styles live as long as the list.
  explicit CompiledRules(platform::PropertyListView rules);

  /// The key's texts as numbers.
  Key key(const std::array<std::string_view, kSubjects>& texts);

  /// The style dictionaries of all rules that hold, in order.
  std::vector<platform::PropertyListView> matching(const Key& key) const;

 private:
  struct Term {
    std::uint32_t subject;
    std::uint32_t firstValue;
    std::uint32_t endValue;
  };
  struct Rule {
    std::uint32_t firstTerm;
    std::uint32_t endTerm;
    platform::PropertyListView style;
  };

  std::uint32_t numberOf(std::string_view text);
  void add(std::string_view condition, platform::PropertyListView style);
  bool holds(const Rule& rule, const Key& key) const;
  bool holds(const Term& term, const Key& key) const;

  std::map<std::string, std::uint32_t, std::less<>> numbers_;
  std::vector<std::uint32_t> values_;
  std::vector<Term> terms_;
  std::vector<Rule> rules_;
};

}  // namespace bench
