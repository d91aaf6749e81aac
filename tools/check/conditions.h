#pragma once

#include <string_view>

#include "check/boards.h"
#include "check/theme.h"

namespace tools::check {

/// Whether a condition holds in a case. The library says so.
bool holds(std::string_view condition, const KeyCase& key);

/// Tells what of a condition can never hold, whatever the key; true when there was something.
class ConditionCheck {
 public:
  ConditionCheck(Theme& theme, const Boards& boards) : theme_(theme), boards_(boards) {}

  bool check(const Place& place, std::string_view condition);

 private:
  bool checkTerm(const Place& place, std::string_view term);
  bool checkValue(const Place& place, std::string_view name, std::string_view value);
  bool isKnown(std::string_view name);
  bool fitsSomewhere(std::string_view name, std::string_view value);

  Theme& theme_;
  const Boards& boards_;
  std::map<std::string, bool, std::less<>> known_;
  std::map<std::string, bool, std::less<>> fits_;
};

}  // namespace tools::check
