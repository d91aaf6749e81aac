#pragma once

#include <cstddef>
#include <string>

#include "explain/explanation.h"

namespace tools::explain {

/// How much of a condition people are shown, in bytes.
inline constexpr std::size_t kMaxShownCondition = 200;

/// An explanation for people: what the key is, its properties, the rules, what lies behind it.
std::string explanationText(const Explanation& explanation, const ThemeRules& rules);

/// "line 12 of theme.plist"; "theme.plist" where it has no lines.
std::string placeOf(platform::PropertyListView rule, const std::string& file);

}  // namespace tools::explain
