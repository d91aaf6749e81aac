// Conditions: the matcher, which walks the text, against one that takes it apart; and a rule as
// `explain` judges it against the styles that a key gets.

#include "styles/condition.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "host/plist/builder.h"
#include "host/plist/utf8.h"
#include "styles/style_matching.h"
#include "support/byte_source.h"
#include "support/require.h"
#include "support/target.h"

namespace {

using prismal::ConditionSubject;
using prismal::KeyIdentity;

struct Key {
  std::optional<std::string> name;
  std::string displayType;
  int hint = 0;
  int row = 0;
  int state = 3;

  KeyIdentity identity() const {
    return KeyIdentity({.name = name ? std::optional<std::string_view>(*name) : std::nullopt,
                        .displayTypeName = displayType,
                        .displayTypeHint = hint,
                        .displayRowHint = row});
  }
};

constexpr std::string_view kNames[] = {"", "Latin-Small-Letter-G", "Shift-Key", "a,b;c"};
constexpr std::string_view kDisplayTypes[] = {"UIKBKeyDisplayTypeLetter", "UIKBKeyDisplayType",
                                              "UIKBKeyDisplayTypeA-B", "short"};

Key makeKey(fuzz::ByteSource& source) {
  Key key;
  if (source.flag()) key.name = source.rarely(4) ? source.text() : source.pick(kNames);
  key.displayType = source.pick(kDisplayTypes);
  key.hint = source.integer();
  key.row = source.integer();
  key.state = source.integer();
  return key;
}

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

std::string withoutHyphens(std::string text) {
  std::erase(text, '-');
  return text;
}

/// As the C library reads it, which knows no white space but that of ASCII.
int number(const std::string& text) {
  constexpr long kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(std::strtol(text.c_str(), nullptr, 10), -kMost, kMost));
}

struct Subject {
  std::string_view prefix;
  ConditionSubject subject;
  bool (*fits)(const std::string& value, const Key& key);
};

constexpr Subject kSubjects[] = {
    {"DisplayTypeHint=", ConditionSubject::kDisplayTypeHint,
     [](const std::string& value, const Key& key) { return value == std::to_string(key.hint); }},
    {"DisplayType=", ConditionSubject::kDisplayType,
     [](const std::string& value, const Key& key) {
       return withoutHyphens(value) ==
              (key.displayType.size() > 18 ? key.displayType.substr(18) : std::string());
     }},
    {"ControlState=", ConditionSubject::kControlState,
     [](const std::string& value, const Key& key) { return number(value) == key.state; }},
    {"Row=", ConditionSubject::kRow,
     [](const std::string& value, const Key& key) {
       return value == "Row" + std::to_string(key.row);
     }},
    {"KeyName=", ConditionSubject::kKeyName,
     [](const std::string& value, const Key& key) { return key.name == value; }},
};

ConditionSubject subjectOf(std::string_view term) {
  for (const Subject& subject : kSubjects) {
    if (term.starts_with(subject.prefix)) return subject.subject;
  }
  return ConditionSubject::kNothing;
}

bool termHolds(const std::string& term, const Key& key) {
  for (const Subject& subject : kSubjects) {
    if (!term.starts_with(subject.prefix)) continue;
    const auto values = split(term.substr(subject.prefix.size()), ',');
    return std::ranges::any_of(values, [&](const auto& value) { return subject.fits(value, key); });
  }
  return false;
}

/// The first term that does not hold.
std::optional<std::string> failureOf(std::string_view condition, const Key& key) {
  for (const std::string& term : split(condition, ';')) {
    if (term == "*") return std::nullopt;
    if (!termHolds(term, key)) return term;
  }
  return std::nullopt;
}

void requireSameFailure(std::string_view condition, const Key& key) {
  const auto failure = prismal::PMStyleConditionFailure(condition, key.identity(), key.state);
  const auto expected = failureOf(condition, key);
  fuzz::require(failure.has_value() == expected.has_value(), "both matchers agree", condition);
  if (!failure) return;
  fuzz::require(failure->term == *expected, "both fail at one term", condition);
  fuzz::require(failure->subject == subjectOf(failure->term), "the subject is the term's",
                condition);
  fuzz::require(
      failure->term.data() >= condition.data() &&
          failure->term.data() + failure->term.size() <= condition.data() + condition.size(),
      "the term is a part of the condition", condition);
}

/// The verdict that `explain` tells is the one by which a key gets its styles.
void requireSameVerdict(std::string_view condition, const Key& key) {
  host::plist::Builder builder;
  const host::plist::Builder::View pair[] = {builder.string(condition), builder.dictionary({})};
  const host::plist::Builder::View rules[] = {builder.array(pair)};
  const auto list = builder.finish(builder.array(rules));
  const KeyIdentity identity = key.identity();
  const bool matches = prismal::PMStyleConditionMatches(condition, identity, key.state);
  const auto verdict = prismal::PMJudgeRule(list.items()[0], identity, key.state);
  fuzz::require(static_cast<bool>(verdict.style) == matches, "a rule holds as its condition does",
                condition);
  fuzz::require(verdict.failure.has_value() != matches, "a failure or a style", condition);
  const auto styles = prismal::PMGetMatchingStyles(list, identity, key.state);
  fuzz::require(styles.size() == (matches ? 1U : 0U), "a key gets the styles of what holds",
                condition);
}

}  // namespace

int LLVMFuzzerInitialize(int*, char***) {
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  fuzz::ByteSource source(fuzz::textOf(bytes, size));
  const Key key = makeKey(source);
  const std::string_view condition = source.all();
  if (host::plist::isAscii(condition)) requireSameFailure(condition, key);
  if (host::plist::findInvalidUtf8(condition) == condition.npos) requireSameVerdict(condition, key);
  return 0;
}
