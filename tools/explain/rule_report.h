#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "explain/rule_hits.h"
#include "explain/theme_rules.h"
#include "keyboard/key_json.h"

namespace tools::explain {

/// A rule, and what it hits.
struct RuleReport {
  std::size_t number;
  std::string_view style;  ///< as it was asked for
  prismal::StyleList list;
  std::span<const ViewHits> hits;

  platform::PropertyListView rule() const { return list.rules.items()[number]; }
};

/// For people: a line for what has the same keys in the same states.
std::string ruleText(const RuleReport& report, const ThemeRules& rules);

/// For programs: a keyplane with hits after the other.
keyboard::Json ruleJson(const RuleReport& report);

}  // namespace tools::explain
