#include "explain/explanation_json.h"

#include <array>
#include <utility>

#include "styles/control_state.h"

namespace tools::explain {

using keyboard::Json;
using prismal::ConditionSubject;

namespace {

template <class Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json(nullptr);
}

constexpr std::array<std::pair<const char*, ConditionSubject>, 5> kTexts = {
    {{"KeyName", ConditionSubject::kKeyName},
     {"DisplayType", ConditionSubject::kDisplayType},
     {"DisplayTypeHint", ConditionSubject::kDisplayTypeHint},
     {"Row", ConditionSubject::kRow},
     {"ControlState", ConditionSubject::kControlState}}};

/// The key as a scenario writes it, and what conditions compare.
Json keyOf(const Explanation& explanation) {
  const auto tree = explanation.key->tree.get();
  const int controlState = prismal::PMGetControlState(tree);
  Json texts;
  for (const auto& [term, subject] : kTexts) {
    texts[term] = orNull(testedText(subject, explanation.identity(), controlState));
  }
  return {{"name", orNull(tree.name())},
          {"displayType", tree.displayType()},
          {"displayTypeHint", tree.displayTypeHint()},
          {"displayRowHint", tree.displayRowHint()},
          {"state", tree.state()},
          {"controlState", controlState},
          {"texts", std::move(texts)}};
}

Json keyplaneOf(const Explanation& explanation) {
  const auto tree = explanation.shown.keyplane.tree.get();
  return {{"name", orNull(tree.name())},
          {"visualStyle", tree.visualStyle()},
          {"type", tree.type()},
          {"isLetters", tree.isLetters()},
          {"isShiftKeyplane", tree.isShiftKeyplane()}};
}

Json propertiesOf(const Explanation& explanation) {
  Json all = Json::array();
  for (const TraitProperty& property : explanation.properties) {
    const auto rule = property.rule;
    all.push_back({{"property", property.property},
                   {"value", property.value},
                   {"color", property.color},
                   {"rule", orNull(rule)},
                   {"line", rule ? lineJson(explanation.outcomes.rules[*rule].rule) : Json()}});
  }
  return all;
}

Json ruleJson(std::size_t number, const RuleOutcome& outcome, const Explanation& explanation) {
  const auto& [rule, verdict, won, losses] = outcome;
  Json lost = Json::array();
  for (const LostProperty& loss : losses) {
    lost.push_back({{"property", loss.property}, {"to", loss.to}});
  }
  const auto failed = verdict.failure.value_or(prismal::FailedTerm());
  const int controlState = prismal::PMGetControlState(explanation.key->tree.get());
  Json told = {
      {"rule", number},
      {"line", lineJson(rule)},
      {"condition", conditionJson(rule)},
      {"matches", static_cast<bool>(verdict.style)},
      {"failedTerm", verdict.failure ? Json(failed.term) : Json()},
      {"testedAgainst", orNull(testedText(failed.subject, explanation.identity(), controlState))},
      {"won", won},
      {"lost", std::move(lost)}};
  if (!verdict.message.empty()) told["message"] = verdict.message;
  return told;
}

Json rulesOf(const Explanation& explanation) {
  Json all = Json::array();
  const auto& rules = explanation.outcomes.rules;
  for (std::size_t i = 0; i < rules.size(); ++i) all.push_back(ruleJson(i, rules[i], explanation));
  return all;
}

Json backgroundOf(const Explanation& explanation) {
  Json chain = Json::array();
  for (const BackgroundTry& tried : explanation.background) {
    chain.push_back({{"key", tried.key}, {"path", orNull(tried.path)}, {"hit", tried.hit}});
    if (!tried.reason.empty()) chain.back()["reason"] = tried.reason;
  }
  return chain;
}

}  // namespace

Json explanationJson(const Explanation& explanation) {
  return {{"key", keyOf(explanation)},
          {"keyplane", keyplaneOf(explanation)},
          {"visualStyle", explanation.visualStyle},
          {"traits", explanation.traits},
          {"properties", propertiesOf(explanation)},
          {"rules", rulesOf(explanation)},
          {"background", backgroundOf(explanation)}};
}

Json conditionJson(platform::PropertyListView rule) {
  const auto items = rule.items();
  return items.empty() ? Json() : orNull(items[0].string());
}

Json lineJson(platform::PropertyListView rule) {
  return orNull(lineOf(rule));
}

}  // namespace tools::explain
