#include "styles/condition.h"

#include "styles/condition_walk.h"

namespace prismal {

std::optional<FailedTerm> PMStyleConditionFailure(std::string_view condition,
                                                  const KeyIdentity& key, int controlState) {
  const std::size_t place = ConditionWalk(condition).failingTerm(key, controlState);
  if (place == std::string_view::npos) return std::nullopt;
  const std::string_view rest = condition.substr(place);
  return FailedTerm{rest.substr(0, rest.find(';')), termStart(rest).subject};
}

bool PMStyleConditionMatches(std::string_view condition, const KeyIdentity& key, int controlState) {
  return ConditionWalk(condition).holds(key, controlState);
}

}  // namespace prismal
