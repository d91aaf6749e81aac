#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

namespace tools::check {

/// An error is lost on the device: the library skips it or has nothing to use. A warning has an
/// effect, but hardly the one that was meant.
enum class Severity : std::uint8_t { warning, error };

/// A kind of finding. Its name is what people select, ignore and look up; it never changes.
struct Rule {
  std::string_view name;
  Severity severity;
  std::string_view summary;  // completes "a finding says that ..."
};

// In the order of a theme's sections, which is that of docs/checks.md.
inline constexpr Rule kRules[] = {
    {"unreadable", Severity::error, "the file can't be read, or is no property list"},
    {"root-type", Severity::error, "the root of the list is no dictionary"},
    {"no-section", Severity::warning, "none of the four sections is there"},
    {"unknown-section", Severity::warning, "a key of the root is none that is read"},
    {"section-type", Severity::error, "a section has the wrong type"},
    {"duplicate-key", Severity::warning, "a dictionary has a key twice, and the last one counts"},

    {"color-entry", Severity::error, "an entry of CustomColor is no pair"},
    {"color-name", Severity::error, "the name of a colour is no string"},
    {"color-string", Severity::error, "a colour has no colour string"},
    {"color-digits", Severity::warning, "a colour string holds what is no digit"},
    {"hidden-color", Severity::warning, "a colour is defined again, and the first one counts"},
    {"half-background", Severity::warning, "one of a pair of background colours is missing"},

    {"gradient-entry", Severity::error, "an entry of CustomLinearGradient has too few items"},
    {"gradient-name", Severity::error, "the name of a gradient is no string"},
    {"gradient-color", Severity::error, "a colour name of a gradient is no string"},
    {"gradient-items", Severity::warning, "a gradient has items that nobody looks at"},
    {"hidden-gradient", Severity::warning, "a gradient is defined again, and the last one counts"},

    {"unused-name", Severity::warning, "a definition has a name that nobody asks for"},
    {"unknown-color", Severity::warning, "neither the theme nor the system defines a colour"},
    {"unknown-gradient", Severity::warning, "neither the theme nor the system defines a gradient"},

    {"unknown-style", Severity::warning, "a list of rules is for no visual style"},
    {"unread-style", Severity::warning, "a list of rules is never read"},
    {"style-list", Severity::error, "the rules of a visual style are no array"},
    {"too-many-rules", Severity::warning, "a theme has more rules than can be tried on every key"},
    {"rule-pair", Severity::error, "a rule is no pair"},
    {"rule-condition", Severity::error, "the condition of a rule is no string"},
    {"rule-value", Severity::error, "what a rule sets is no dictionary"},
    {"unknown-term", Severity::warning, "a condition has a term that never holds"},
    {"unknown-value", Severity::warning, "a term has a value that fits no key of any board"},
    {"ignored-terms", Severity::warning, "a condition goes on behind a *"},
    {"unknown-property", Severity::warning, "a rule sets a property that nobody reads"},
    {"property-type", Severity::error, "a property has the wrong type"},
    {"property-without-effect", Severity::warning, "a property of a rule has no effect"},
    {"unknown-font", Severity::warning, "no font has that name, and one has a name like it"},
    {"rule-sets-nothing", Severity::warning, "a rule has no effect on the keys that it matches"},
    {"rule-never-matches", Severity::warning, "a rule matches no key of any board"},
    {"rule-overridden", Severity::warning, "later rules set all that a rule sets"},

    {"unknown-image-key", Severity::warning, "a background key has no known form"},
    {"image-value", Severity::error, "the path of a picture is no string"},
    {"image-outside", Severity::error, "the path of a picture leads out of the theme's folder"},
    {"image-on-device", Severity::warning, "a picture is named by a path of the device"},
    {"image-missing", Severity::error, "a picture is missing"},
    {"image-broken", Severity::error, "a file is no picture"},
    {"missing-sibling", Severity::warning, "a picture has no @2x sibling"},
    {"sibling-size", Severity::warning, "an @2x sibling is not twice as large as its picture"},
    {"image-never-shown", Severity::warning, "no board ever shows a picture"},
    {"image-stretched", Severity::warning, "a picture is stretched by more than a tenth"},

    {"low-contrast", Severity::warning, "text hardly stands out from its key"},
};

constexpr bool namesAreUnique(std::span<const Rule> rules) {
  return std::ranges::all_of(rules, [&](const Rule& rule) {
    return std::ranges::count(rules, rule.name, &Rule::name) == 1;
  });
}
static_assert(namesAreUnique(kRules));

/// The rule of that name; null for a name that none has.
constexpr const Rule* findRule(std::string_view name) {
  const auto* const found = std::ranges::find(kRules, name, &Rule::name);
  return found == std::end(kRules) ? nullptr : found;
}

/// The rule of that name, which the compiler looks for: one that isn't there doesn't compile.
consteval const Rule& operator""_rule(const char* name, std::size_t size) {
  return *findRule({name, size});
}

constexpr std::string_view wordOf(Severity severity) {
  return severity == Severity::error ? "error" : "warning";
}

}  // namespace tools::check
