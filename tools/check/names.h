#pragma once

// The names of colours and gradients: who defines them, who asks for them, and which of them say
// what was meant.

#include <string_view>
#include <vector>

#include "check/theme.h"
#include "colors/keyplane_gradient.h"

namespace tools::check {

constexpr Kind otherThan(Kind kind) {
  return kind == Kind::color ? Kind::gradient : Kind::color;
}

/// "colour", "gradient".
std::string_view wordOf(Kind kind);

/// The colour names of backgrounds that count once both of a pair are defined, each pair once.
const std::vector<prismal::BackgroundColorNames>& backgroundPairs();

/// All names that the keyboard, or the library by itself, asks for.
std::vector<std::string_view> systemNames(Kind kind);
bool isSystemName(Kind kind, std::string_view name);

/// Whether the theme or the system defines `name`.
bool isDefined(const Theme& theme, Kind kind, std::string_view name);

/// Notes the names which a definition, or a section of them, would define if it were not wrong.
void noteAttempts(Theme& theme, Kind kind, platform::PropertyListView value);

/// Whether `name` doesn't stand for what was meant, by itself or by a colour that it is made of.
/// After checkNames and checkPairs.
bool isDoubtful(const Theme& theme, Kind kind, std::string_view name);

}  // namespace tools::check
