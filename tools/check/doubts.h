#pragma once

#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "check/boards.h"
#include "check/styles.h"
#include "check/theme.h"

namespace tools::check {

/// What of a keyboard's look may not be what was meant, because of rules of which something has
/// been told: what follows from it is no news.
class Doubts {
 public:
  /// All must outlive this.
  Doubts(const Theme& theme, const Boards& boards, std::span<const DeadRule> dead);

  /// Whether a dead rule was meant to set `part` of a key on a keyplane of visual style `style`,
  /// over the rule that has the last word there.
  bool isDoubtful(std::string_view style, const KeyCase& key, const LastWord& word,
                  Part part) const;

 private:
  using Styles = std::set<std::string_view>;
  Styles stylesOf(std::string_view list) const;

  const Theme& theme_;
  const Boards& boards_;
  std::span<const DeadRule> dead_;
  std::map<std::string_view, Styles> styles_;  ///< by list, those that would get its rules
};

}  // namespace tools::check
