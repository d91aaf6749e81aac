#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/property_list.h"
#include "styles/key_identity.h"
#include "styles/style_matching.h"
#include "styles/style_properties.h"

namespace tools::explain {

/// A property of a rule that another rule, or the rule itself further on, replaced.
struct LostProperty {
  std::string_view property;
  std::size_t to;  ///< that rule
};

/// What became of one rule of a list for one key.
struct RuleOutcome {
  platform::PropertyListView rule;
  prismal::RuleVerdict verdict;
  std::vector<std::string_view> won;
  std::vector<LostProperty> lost;
};

/// The setting that stands in the end, and the rule that it is from.
struct Winner {
  std::size_t rule;
  prismal::StyleSetting setting;
};

/// What became of all rules of a list; views into the list.
struct RuleOutcomes {
  std::vector<RuleOutcome> rules;
  const std::optional<Winner>& winnerOf(prismal::StylePart part) const {
    return winners[static_cast<std::size_t>(part)];
  }
  /// By part.
  std::array<std::optional<Winner>, static_cast<std::size_t>(prismal::StylePart::kFontName) + 1>
      winners;
};

/// `rules` of whatever type it is: only an array has any.
RuleOutcomes outcomesOf(platform::PropertyListView rules, const prismal::KeyIdentity& key,
                        int controlState);

}  // namespace tools::explain
