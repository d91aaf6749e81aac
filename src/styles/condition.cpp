#include "styles/condition.h"

#include <concepts>
#include <optional>

#include "support/leading_integer.h"

namespace prismal {

namespace {

/// The value list of `term` when it begins with `prefix`, else none.
constexpr std::optional<std::string_view> valuesAfter(std::string_view prefix,
                                                      std::string_view term) {
  if (!term.starts_with(prefix)) return std::nullopt;
  return term.substr(prefix.size());
}

/// Whether `fits` accepts one of the comma-separated values, taken in order; empty values count.
template <std::predicate<std::string_view> Fits>
constexpr bool anyValue(std::string_view values, Fits fits) {
  for (;;) {
    const auto comma = values.find(',');
    if (fits(values.substr(0, comma))) return true;
    if (comma == std::string_view::npos) return false;
    values.remove_prefix(comma + 1);
  }
}

/// Whether `value` is `text` once its hyphens are left out. Hyphens of `text` stand.
constexpr bool equalWithoutHyphens(std::string_view value, std::string_view text) {
  for (const char c : value) {
    if (c == '-') continue;
    if (text.empty() || text.front() != c) return false;
    text.remove_prefix(1);
  }
  return text.empty();
}

/// Whether a term holds; `subject` becomes what it tests.
bool termHolds(std::string_view term, const KeyIdentity& key, int controlState,
               ConditionSubject& subject) {
  // The hint first, as the keyboard's own order has it; no prefix is the start of another one.
  if (const auto values = valuesAfter("DisplayTypeHint=", term)) {
    subject = ConditionSubject::kDisplayTypeHint;
    return anyValue(*values, [&](auto value) { return value == key.displayTypeHint(); });
  }
  if (const auto values = valuesAfter("DisplayType=", term)) {
    subject = ConditionSubject::kDisplayType;
    return anyValue(*values,
                    [&](auto value) { return equalWithoutHyphens(value, key.displayType()); });
  }
  if (const auto values = valuesAfter("ControlState=", term)) {
    subject = ConditionSubject::kControlState;
    return anyValue(*values, [&](auto value) { return leadingInteger(value) == controlState; });
  }
  if (const auto values = valuesAfter("Row=", term)) {
    subject = ConditionSubject::kRow;
    return anyValue(*values, [&](auto value) { return value == key.row(); });
  }
  if (const auto values = valuesAfter("KeyName=", term)) {
    subject = ConditionSubject::kKeyName;
    return anyValue(*values, [&](auto value) { return key.name() == value; });
  }
  subject = ConditionSubject::kNothing;
  return false;
}

}  // namespace

std::optional<FailedTerm> PMStyleConditionFailure(std::string_view condition,
                                                  const KeyIdentity& key, int controlState) {
  for (;;) {
    const auto semicolon = condition.find(';');
    const auto term = condition.substr(0, semicolon);
    if (term == "*") return std::nullopt;
    ConditionSubject subject = ConditionSubject::kNothing;
    if (!termHolds(term, key, controlState, subject)) return FailedTerm{term, subject};
    if (semicolon == std::string_view::npos) return std::nullopt;
    condition.remove_prefix(semicolon + 1);
  }
}

}  // namespace prismal
