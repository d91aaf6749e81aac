#include "explain/rule_outcomes.h"

namespace tools::explain {

namespace {

void noteWinners(RuleOutcomes& outcomes, std::size_t rule) {
  for (const auto& setting : prismal::styleSettings(outcomes.rules[rule].verdict.style)) {
    outcomes.winners[static_cast<std::size_t>(setting.part)] = {rule, setting};
  }
}

void tellFate(RuleOutcomes& outcomes, std::size_t rule) {
  RuleOutcome& outcome = outcomes.rules[rule];
  for (const auto& setting : prismal::styleSettings(outcome.verdict.style)) {
    const Winner& winner = *outcomes.winnerOf(setting.part);
    if (winner.rule == rule && winner.setting.property == setting.property) {
      outcome.won.push_back(setting.property);
    } else {
      outcome.lost.push_back({setting.property, winner.rule});
    }
  }
}

}  // namespace

RuleOutcomes outcomesOf(platform::PropertyListView rules, const prismal::KeyIdentity& key,
                        int controlState) {
  RuleOutcomes outcomes;
  for (const auto rule : rules.items()) {
    outcomes.rules.push_back({rule, prismal::PMJudgeRule(rule, key, controlState), {}, {}});
  }
  for (std::size_t i = 0; i < outcomes.rules.size(); ++i) noteWinners(outcomes, i);
  for (std::size_t i = 0; i < outcomes.rules.size(); ++i) tellFate(outcomes, i);
  return outcomes;
}

}  // namespace tools::explain
