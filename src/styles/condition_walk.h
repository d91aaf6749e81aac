#pragma once

// The walk over a condition's text. In a header, so that who goes through a list can have it in
// line: a call for each rule would be an eighth of the work.

#include <cstddef>
#include <cstring>
#include <string_view>

#include "styles/condition.h"
#include "styles/key_identity.h"
#include "styles/separators.h"
#include "support/leading_integer.h"

namespace prismal {

/// How a term begins: what it tests, and how long its name is. No name has a separator in it.
struct TermStart {
  ConditionSubject subject = ConditionSubject::kNothing;
  std::size_t length = 0;
};

/// How the term at the start of `rest` begins; it tests nothing when it begins with no name.
inline TermStart termStart(std::string_view rest) {
  const auto ifNamed = [&](std::string_view name, ConditionSubject subject) {
    const bool named =
        rest.size() >= name.size() && std::memcmp(rest.data(), name.data(), name.size()) == 0;
    return named ? TermStart{subject, name.size()} : TermStart();
  };
  switch (rest.empty() ? '\0' : rest.front()) {
    case 'D': {
      const auto type = ifNamed("DisplayType=", ConditionSubject::kDisplayType);
      if (type.length != 0) return type;
      return ifNamed("DisplayTypeHint=", ConditionSubject::kDisplayTypeHint);
    }
    case 'C':
      return ifNamed("ControlState=", ConditionSubject::kControlState);
    case 'R':
      return ifNamed("Row=", ConditionSubject::kRow);
    case 'K':
      return ifNamed("KeyName=", ConditionSubject::kKeyName);
    default:
      return {};
  }
}

/// Whether two names are equal. Those that differ mostly do so at their ends, as those of letters.
inline bool equal(std::string_view value, std::string_view text) {
  return value.size() == text.size() &&
         (value.empty() || (value.back() == text.back() && value == text));
}

/// Whether `value` is `text` once its hyphens are left out. Hyphens of `text` stand.
inline bool equalWithoutHyphens(std::string_view value, std::string_view text) {
  for (const char c : value) {
    if (c == '-') continue;
    if (text.empty() || text.front() != c) return false;
    text.remove_prefix(1);
  }
  return text.empty();
}

/// Goes through a condition's text, by its separators.
class ConditionWalk {
 public:
  explicit ConditionWalk(std::string_view condition) : text_(condition), separators_(condition) {}

  /// Where the first term that does not hold starts; npos when the condition holds.
  std::size_t failingTerm(const KeyIdentity& key, int controlState) {
    do {
      const std::size_t term = place_;
      if (isAtWildcard()) break;
      if (!takeTerm(key, controlState)) return term;
    } while (behind_ == ';');
    return std::string_view::npos;
  }

  /// Whether the condition holds.
  bool holds(const KeyIdentity& key, int controlState) {
    return failingTerm(key, controlState) == std::string_view::npos;
  }

 private:
  std::string_view rest() const { return {text_.data() + place_, text_.size() - place_}; }

  /// Whether the term here is "*", after which nothing is looked at.
  bool isAtWildcard() const {
    return rest().starts_with('*') && (rest().size() == 1 || rest()[1] == ';');
  }

  /// Goes past a term that holds; whether it does.
  bool takeTerm(const KeyIdentity& key, int controlState) {
    const TermStart start = termStart(rest());
    place_ += start.length;
    switch (start.subject) {
      case ConditionSubject::kDisplayType:
        return takeValues([text = key.displayType()](std::string_view value) {
          return equalWithoutHyphens(value, text);
        });
      case ConditionSubject::kControlState:
        return takeValues(
            [=](std::string_view value) { return leadingInteger(value) == controlState; });
      case ConditionSubject::kDisplayTypeHint:
        return takeText(key.displayTypeHint());
      case ConditionSubject::kRow:
        return takeText(key.row());
      case ConditionSubject::kKeyName:
        return key.name() && takeText(*key.name());
      case ConditionSubject::kNothing:
        break;
    }
    return false;
  }

  bool takeText(std::string_view text) {
    return takeValues([=](std::string_view value) { return equal(value, text); });
  }

  /// Goes past the values of a term until one fits, and past the rest of them then; whether one
  /// does. Empty values count.
  template <class Fits>
  bool takeValues(Fits fits) {
    while (!fits(takeValue())) {
      if (behind_ != ',') return false;
    }
    if (behind_ == ',') skipValues();
    return true;
  }

  void skipValues() {
    const std::size_t end = text_.find(';', place_);
    separators_.forget();
    behind_ = end == std::string_view::npos ? '\0' : ';';
    place_ = end + 1;
  }

  std::string_view takeValue() {
    const std::size_t end = separators_.next(place_);
    const std::string_view value(text_.data() + place_, end - place_);
    behind_ = end < text_.size() ? text_[end] : '\0';
    place_ = end + 1;
    return value;
  }

  std::string_view text_;
  Separators separators_;
  std::size_t place_ = 0;
  char behind_ = '\0';  // the separator behind the value that was taken last; null at the end
};

}  // namespace prismal
