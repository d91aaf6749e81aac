#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "check/boards.h"
#include "check/library.h"
#include "check/theme.h"

namespace tools::check {

/// The rules that have the last word, for each of a board's cases: which rule of its list sets each
/// part, counted from 0; -1 where no rule does.
using LastWord = std::array<std::int32_t, kParts>;
using LastWords = std::vector<LastWord>;

/// A rule that doesn't set what it was meant to set, which has been told.
struct DeadRule {
  static constexpr std::size_t kLast = static_cast<std::size_t>(-1);

  std::string list;       ///< the visual style under which it was meant to be; empty: any
  std::size_t index = 0;  ///< in that list; kLast: the list itself isn't where it was meant to be
  std::vector<std::string> conditions;  ///< any of which may be meant
  Parts parts = 0;
};

/// What rules do to keys, and what they were meant to do.
struct RuleUse {
  LastWords words;
  std::vector<DeadRule> dead;
};

/// Checks the lists of rules, each for itself and against all keys. False when there are too many
/// rules for the latter; `use` is then empty.
bool checkStyles(Theme& theme, const Boards& boards, RuleUse& use);

/// Tells of the rules of `list`, under `name`, which match no key or are overridden, and of the
/// cases under that list who has the last word.
void checkUse(Theme& theme, const Boards& boards, std::string_view name,
              platform::PropertyListView list, RuleUse& use, const std::vector<bool>& isExplained);

}  // namespace tools::check
