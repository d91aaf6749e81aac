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

/// Checks the lists of rules, each for itself and against all keys. `words` takes who has the last
/// word. False when there are too many rules for that; `words` is then empty.
bool checkStyles(Theme& theme, const Boards& boards, LastWords& words);

/// Tells of the rules of `list`, under `name`, which match no key or are overridden, and of the
/// cases under that list who has the last word.
void checkUse(Theme& theme, const Boards& boards, std::string_view name,
              platform::PropertyListView list, LastWords& words,
              const std::vector<bool>& isExplained);

}  // namespace tools::check
