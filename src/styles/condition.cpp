#include "styles/condition.h"

#include <concepts>

#include "support/leading_integer.h"

namespace prismal {

namespace {

struct NamedSubject {
  std::string_view prefix;
  ConditionSubject subject;
};

// The hint first, as the keyboard's own order has it; no prefix is the start of another one.
constexpr NamedSubject kSubjects[] = {
    {"DisplayTypeHint=", ConditionSubject::kDisplayTypeHint},
    {"DisplayType=", ConditionSubject::kDisplayType},
    {"ControlState=", ConditionSubject::kControlState},
    {"Row=", ConditionSubject::kRow},
    {"KeyName=", ConditionSubject::kKeyName},
};

/// A term taken apart.
struct Term {
  ConditionSubject subject = ConditionSubject::kNothing;
  std::string_view values;
};

constexpr Term takeApart(std::string_view term) {
  for (const auto& [prefix, subject] : kSubjects) {
    if (term.starts_with(prefix)) return {subject, term.substr(prefix.size())};
  }
  return {};
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

bool holds(const Term& term, const KeyIdentity& key, int controlState) {
  const auto any = [&](auto fits) { return anyValue(term.values, fits); };
  switch (term.subject) {
    case ConditionSubject::kDisplayTypeHint:
      return any([&](auto value) { return value == key.displayTypeHint(); });
    case ConditionSubject::kDisplayType:
      return any([&](auto value) { return equalWithoutHyphens(value, key.displayType()); });
    case ConditionSubject::kControlState:
      return any([&](auto value) { return leadingInteger(value) == controlState; });
    case ConditionSubject::kRow:
      return any([&](auto value) { return value == key.row(); });
    case ConditionSubject::kKeyName:
      return any([&](auto value) { return key.name() == value; });
    case ConditionSubject::kNothing:
      break;
  }
  return false;
}

}  // namespace

std::optional<FailedTerm> PMStyleConditionFailure(std::string_view condition,
                                                  const KeyIdentity& key, int controlState) {
  for (;;) {
    const auto semicolon = condition.find(';');
    const auto text = condition.substr(0, semicolon);
    if (text == "*") return std::nullopt;
    const Term term = takeApart(text);
    if (!holds(term, key, controlState)) return FailedTerm{text, term.subject};
    if (semicolon == std::string_view::npos) return std::nullopt;
    condition.remove_prefix(semicolon + 1);
  }
}

}  // namespace prismal
