#include "styles/condition.h"

#include <cstring>

#include "styles/separators.h"
#include "support/leading_integer.h"

namespace prismal {

namespace {

/// How a term begins, and what it tests then. No name has a separator in it.
struct NamedSubject {
  std::string_view name;
  ConditionSubject subject = ConditionSubject::kNothing;
};

constexpr NamedSubject kDisplayType = {"DisplayType=", ConditionSubject::kDisplayType};
constexpr NamedSubject kDisplayTypeHint = {"DisplayTypeHint=", ConditionSubject::kDisplayTypeHint};
constexpr NamedSubject kControlState = {"ControlState=", ConditionSubject::kControlState};
constexpr NamedSubject kRow = {"Row=", ConditionSubject::kRow};
constexpr NamedSubject kKeyName = {"KeyName=", ConditionSubject::kKeyName};

/// What the term at the start of `rest` tests; nothing when it begins with no name. In line by
/// force: as a call it is a tenth of the work for a rule that doesn't hold.
[[gnu::always_inline]] inline NamedSubject subjectAt(std::string_view rest) {
  const auto begins = [&](const NamedSubject& named) {
    return rest.size() >= named.name.size() &&
           std::memcmp(rest.data(), named.name.data(), named.name.size()) == 0;
  };
  const auto ifNamed = [&](const NamedSubject& named) {
    return begins(named) ? named : NamedSubject();
  };
  switch (rest.empty() ? '\0' : rest.front()) {
    case 'D':
      return begins(kDisplayType) ? kDisplayType : ifNamed(kDisplayTypeHint);
    case 'C':
      return ifNamed(kControlState);
    case 'R':
      return ifNamed(kRow);
    case 'K':
      return ifNamed(kKeyName);
    default:
      return {};
  }
}

/// Whether two names are equal. Those that differ mostly do so at their ends, as those of letters.
[[gnu::always_inline]] inline bool equal(std::string_view value, std::string_view text) {
  return value.size() == text.size() &&
         (value.empty() || (value.back() == text.back() && value == text));
}

/// Whether `value` is `text` once its hyphens are left out. Hyphens of `text` stand.
bool equalWithoutHyphens(std::string_view value, std::string_view text) {
  for (const char c : value) {
    if (c == '-') continue;
    if (text.empty() || text.front() != c) return false;
    text.remove_prefix(1);
  }
  return text.empty();
}

/// Goes through a condition's text, by its separators.
class Walk {
 public:
  explicit Walk(std::string_view condition) : text_(condition), separators_(condition) {}

  /// Where the first term that does not hold starts; npos when the condition holds.
  std::size_t failingTerm(const KeyIdentity& key, int controlState) {
    do {
      const std::size_t term = place_;
      if (isAtWildcard()) break;
      if (!takeTerm(key, controlState)) return term;
    } while (behind_ == ';');
    return std::string_view::npos;
  }

 private:
  std::string_view rest() const { return {text_.data() + place_, text_.size() - place_}; }

  /// Whether the term here is "*", after which nothing is looked at.
  bool isAtWildcard() const {
    return rest().starts_with('*') && (rest().size() == 1 || rest()[1] == ';');
  }

  /// Goes past the values of a term until one fits, and past the rest of them then; whether one
  /// does. Empty values count.
  template <class Fits>
  bool takeValues(Fits fits) {
    do {
      const bool found = fits(takeValue());
      while (found && behind_ == ',') takeValue();
      if (found) return true;
    } while (behind_ == ',');
    return false;
  }

  std::string_view takeValue() {
    const std::size_t end = separators_.next(place_);
    const std::string_view value(text_.data() + place_, end - place_);
    behind_ = end < text_.size() ? text_[end] : '\0';
    place_ = end + 1;
    return value;
  }

  bool takeTerm(const KeyIdentity& key, int controlState) {
    const auto [name, subject] = subjectAt(rest());
    place_ += name.size();
    switch (subject) {
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

  std::string_view text_;
  Separators separators_;
  std::size_t place_ = 0;
  char behind_ = '\0';  // the separator behind the value that was taken last; null at the end
};

}  // namespace

std::size_t PMStyleConditionFailingTerm(std::string_view condition, const KeyIdentity& key,
                                        int controlState) {
  return Walk(condition).failingTerm(key, controlState);
}

std::optional<FailedTerm> PMStyleConditionFailure(std::string_view condition,
                                                  const KeyIdentity& key, int controlState) {
  const std::size_t place = PMStyleConditionFailingTerm(condition, key, controlState);
  if (place == std::string_view::npos) return std::nullopt;
  const std::string_view rest = condition.substr(place);
  return FailedTerm{rest.substr(0, rest.find(';')), subjectAt(rest).subject};
}

}  // namespace prismal
