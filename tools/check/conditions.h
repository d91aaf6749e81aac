#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "check/boards.h"
#include "check/theme.h"

namespace tools::check {

/// Whether a condition holds in a case. The library says so.
bool holds(std::string_view condition, const KeyCase& key);

/// Where a condition stands.
class ConditionPlace {
 public:
  ConditionPlace(const Source& source, std::string path, platform::PropertyListView condition)
      : source_(source), place_(source.at(std::move(path), condition)), condition_(condition) {}

  /// The place of a part of the condition's text: on its own line, where there are several.
  Place of(std::string_view part) const {
    const auto text = *condition_.string();
    return source_.within(place_, text, static_cast<std::size_t>(part.data() - text.data()));
  }

 private:
  const Source& source_;
  Place place_;
  platform::PropertyListView condition_;
};

/// Tells what of a condition can never hold, whatever the key.
class ConditionCheck {
 public:
  ConditionCheck(Theme& theme, const Boards& boards) : theme_(theme), boards_(boards) {}

  struct Outcome {
    /// Whether something was told.
    bool isExplained = false;
    /// The condition as it is likely to be meant. Terms of which nobody can tell are left out;
    /// empty when nothing is left then.
    std::string meant;
  };
  Outcome check(const ConditionPlace& place, std::string_view condition);

 private:
  struct Suggestion {
    std::optional<std::string> meant;
    std::string hint;
  };

  // What is checked as it is likely to be meant, itself when nothing is wrong; none: nobody can
  // tell. Without a place nothing is told.
  std::optional<std::string> checkTerm(const Place& place, std::string_view term);
  std::optional<std::string> checkValues(const Place* place, std::string_view name,
                                         std::string_view values);
  std::optional<std::string> checkValue(const Place* place, std::string_view name,
                                        std::string_view value);

  std::optional<std::string_view> nearestTerm(std::string_view name);
  Suggestion suggest(std::string_view name, std::string_view value);
  bool isKnown(std::string_view name);
  bool fitsSomewhere(std::string_view name, std::string_view value);

  Theme& theme_;
  const Boards& boards_;
  std::map<std::string, bool, std::less<>> known_;
  std::map<std::string, bool, std::less<>> fits_;
};

}  // namespace tools::check
