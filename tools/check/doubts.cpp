#include "check/doubts.h"

#include <algorithm>
#include <vector>

#include "check/conditions.h"
#include "host/plist/builder.h"
#include "styles/style_table.h"

namespace tools::check {

using host::plist::Builder;

Doubts::Doubts(const Theme& theme, const Boards& boards, std::span<const DeadRule> dead)
    : theme_(theme), boards_(boards), dead_(dead) {
  for (const DeadRule& rule : dead) {
    if (!styles_.contains(rule.list)) styles_.emplace(rule.list, stylesOf(rule.list));
  }
}

/// The visual styles whose keyplanes get the rules under `list` once there are some.
Doubts::Styles Doubts::stylesOf(std::string_view list) const {
  Builder builder;
  std::vector<Builder::Entry> lists;
  for (const auto& entry : theme_.section(kStyles).entries()) {
    lists.push_back({builder.keep(entry.key), builder.string(entry.key)});
  }
  lists.push_back({builder.keep(list), builder.string(list)});
  const auto table = builder.finish(builder.dictionary(lists));
  Styles styles;
  for (const Keyplane& keyplane : boards_.keyplanes()) {
    const auto rules = prismal::styleListFor(table, keyplane.style).rules;
    if (list.empty() || rules.string() == list) styles.insert(keyplane.style);
  }
  return styles;
}

bool Doubts::isDoubtful(std::string_view style, const KeyCase& key, const LastWord& word,
                        Part part) const {
  const std::int32_t last = word[static_cast<std::size_t>(part)];
  return std::ranges::any_of(dead_, [&](const DeadRule& rule) {
    const bool isOver = last < 0 || static_cast<std::size_t>(last) < rule.index;
    return (rule.parts & only(part)) != 0 && isOver &&
           styles_.find(rule.list)->second.contains(style) &&
           std::ranges::any_of(rule.conditions,
                               [&](const std::string& condition) { return holds(condition, key); });
  });
}

}  // namespace tools::check
