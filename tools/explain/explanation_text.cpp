#include "explain/explanation_text.h"

#include <string_view>
#include <vector>

#include "host/plist/description.h"
#include "keyboard/words.h"
#include "scenario/json_output.h"
#include "styles/control_state.h"
#include "text_table.h"

namespace tools::explain {

using keyboard::Json;

namespace {

using Rows = std::vector<std::vector<std::string>>;

std::string headingOf(const Explanation& explanation) {
  const auto& key = *explanation.key->placed.key;
  std::string text(key.name);
  if (!key.label.empty()) text.append(" (").append(key.label).append(")");
  for (const auto word : keyboard::wordsOf(explanation.view)) text.append(" · ").append(word);
  return text + "\n";
}

/// Headed like the terms of conditions, as `prismal keys` does it.
std::string identityOf(const Explanation& explanation) {
  const auto identity = explanation.identity();
  const auto key = explanation.key->tree.get();
  const auto keyplane = explanation.shown.keyplane.tree.get();
  const Rows rows = {{"KeyName=", std::string(identity.name().value_or(""))},
                     {"DisplayType=", std::string(identity.displayType())},
                     {"DisplayTypeHint=", std::string(identity.displayTypeHint())},
                     {"Row=", std::string(identity.row())},
                     {"ControlState=", std::to_string(prismal::PMGetControlState(key)) +
                                           "  (state " + std::to_string(key.state()) + ")"},
                     {"keyplane", std::string(keyplane.name().value_or("")) + "  (type " +
                                      std::to_string(keyplane.type()) + ")"},
                     {"visual style", std::string(explanation.visualStyle) + "  (" +
                                          std::to_string(keyplane.visualStyle()) + ")"}};
  return textTable(rows);
}

/// A gradient by the names in it; everything else as it is.
std::string valueText(const Json& value) {
  if (value.is_null()) return "none";
  if (value.is_string()) return value;
  if (!value.is_object())
    return value.is_boolean() ? (value.get<bool>() ? "yes" : "no") : value.dump();
  std::string text;
  for (const auto& [member, name] : value.items()) {
    text += (text.empty() ? "" : " to ") + name.get<std::string>();
  }
  return text;
}

std::string colorText(const Json& color, Answerer from) {
  constexpr std::string_view kFrom[] = {"nobody knows it", "", "the theme's"};
  std::string text;
  for (const Json& one : color.is_array() ? color : Json::array({color})) {
    if (one.is_string()) text += (text.empty() ? "" : " to ") + one.get<std::string>();
  }
  const auto who = kFrom[static_cast<std::size_t>(from)];
  if (!text.empty() && !who.empty()) text += ", ";
  return text.append(who);
}

std::string ruleText(std::size_t number, platform::PropertyListView rule) {
  const auto line = lineOf(rule);
  return "rule " + std::to_string(number) + (line ? ", line " + std::to_string(*line) : "");
}

std::string propertiesText(const Explanation& explanation) {
  Rows rows = {{"PROPERTY", "VALUE", "COLOUR", "FROM"}};
  for (const TraitProperty& property : explanation.properties) {
    // Said only where it is so.
    if (property.value == false) continue;
    rows.push_back({std::string(property.property), valueText(property.value),
                    property.namesColor ? colorText(property.color, property.colorFrom) : "",
                    property.rule
                        ? ruleText(*property.rule, explanation.outcomes.rules[*property.rule].rule)
                        : "the system"});
  }
  if (explanation.edgeRemoved) rows.push_back({"lower edge", "removed", "", "the library"});
  return textTable(rows);
}

std::string joined(const std::vector<std::string_view>& names) {
  std::string text;
  for (const auto name : names) text.append(text.empty() ? "" : ", ").append(name);
  return text;
}

std::string lossesText(const std::vector<LostProperty>& lost) {
  std::string text;
  for (const LostProperty& loss : lost) {
    text.append(text.empty() ? "" : ", ").append(loss.property);
    text += " to " + std::to_string(loss.to);
  }
  return text;
}

/// `condition` is what the failed term is a part of.
std::string failureText(const prismal::FailedTerm& failed, std::string_view condition,
                        const Explanation& explanation) {
  const std::string term = host::plist::inOneLine(failed.term, kMaxShownCondition);
  if (failed.subject == prismal::ConditionSubject::kNothing) {
    return "fails: \"" + term + "\" is no term";
  }
  const auto tested = testedText(failed.subject, explanation.identity(),
                                 prismal::PMGetControlState(explanation.key->tree.get()));
  const std::string is = " is " + tested.value_or("none");
  if (failed.term != condition) return "fails at " + term + ": it" + is;
  return "fails: " + term.substr(0, term.find('=')) + is;
}

std::string conditionOf(const RuleOutcome& outcome) {
  const auto items = outcome.rule.items();
  return items.empty() ? "" : std::string(items[0].string().value_or(""));
}

std::string outcomeText(const RuleOutcome& outcome, const Explanation& explanation) {
  const auto& verdict = outcome.verdict;
  if (!verdict.message.empty()) return "malformed: " + std::string(verdict.message);
  if (verdict.failure) return failureText(*verdict.failure, conditionOf(outcome), explanation);
  std::string text = outcome.won.empty() ? "" : "sets " + joined(outcome.won);
  if (!outcome.lost.empty()) {
    text += (text.empty() ? "" : "; ") + ("loses " + lossesText(outcome.lost));
  }
  return text.empty() ? "holds, sets nothing" : text;
}

std::string rulesText(const Explanation& explanation, const ThemeRules& rules) {
  const auto& list = explanation.list;
  const std::string name(list.name);
  if (!list.rules) return "RULES  none: the theme has no " + name + "\n";
  if (!list.rules.isArray()) return "RULES  none: " + name + " is no array\n";
  std::string text = "RULES of " + name + ", " + host::plist::escapeControls(rules.file()) + "\n";
  if (name != explanation.visualStyle) {
    text += std::string(explanation.visualStyle) + " has them from there\n";
  }
  Rows rows = {{"", "LINE", "CONDITION", "OUTCOME"}};
  for (std::size_t i = 0; i < explanation.outcomes.rules.size(); ++i) {
    const RuleOutcome& outcome = explanation.outcomes.rules[i];
    const auto line = lineOf(outcome.rule);
    rows.push_back({std::to_string(i), line ? std::to_string(*line) : "",
                    host::plist::inOneLine(conditionOf(outcome), kMaxShownCondition),
                    outcomeText(outcome, explanation)});
  }
  return text + textTable(rows);
}

std::string tryText(const BackgroundTry& tried) {
  if (!tried.path) return "";
  if (!tried.hit) return tried.reason;
  return tried.file == *tried.path ? "shows"
                                   : "shows, " + tried.file.substr(tried.file.rfind('/') + 1);
}

std::string backgroundText(const Explanation& explanation) {
  Rows rows = {{"BEHIND THE KEYS", "PICTURE", "OUTCOME"}};
  for (const BackgroundTry& tried : explanation.background) {
    rows.push_back({tried.key, tried.path.value_or("none"), tryText(tried)});
  }
  const auto& behind = explanation.backgroundFill;
  rows.push_back({"gradient", valueText(behind.gradient),
                  colorText(colorsOf(behind.answer.fill), behind.answer.from)});
  return textTable(rows);
}

}  // namespace

std::string explanationText(const Explanation& explanation, const ThemeRules& rules) {
  return headingOf(explanation) + "\n" + identityOf(explanation) + "\n" +
         propertiesText(explanation) + "\n" + rulesText(explanation, rules) + "\n" +
         backgroundText(explanation);
}

std::string placeOf(platform::PropertyListView rule, const std::string& file) {
  const auto line = lineOf(rule);
  return (line ? "line " + std::to_string(*line) + " of " : "") + host::plist::escapeControls(file);
}

}  // namespace tools::explain
