#include "regex_rules.h"

#include <algorithm>
#include <string>

namespace bench {

using platform::PropertyListView;

namespace {

using Match = std::match_results<std::string_view::const_iterator>;
using Parts = std::regex_iterator<std::string_view::const_iterator>;

/// Whether one of the values, text between commas, is `wanted`.
bool anyValue(std::string_view values, std::string_view wanted) {
  static const std::regex value("[^,]+", std::regex::optimize);
  return std::any_of(Parts(values.begin(), values.end(), value), Parts(), [&](const Match& part) {
    return std::string_view(part[0].first, part[0].second) == wanted;
  });
}

bool holds(std::string_view condition, const KeyTexts& key) {
  // A group for each subject and its values.
  static const std::regex term(
      "DisplayTypeHint=([^;]*)|DisplayType=([^;]*)|ControlState=([^;]*)|Row=([^;]*)|"
      "KeyName=([^;]*)|\\*",
      std::regex::optimize);
  for (Parts part(condition.begin(), condition.end(), term); part != Parts(); ++part) {
    const auto group = std::find_if(std::next(part->begin()), part->end(),
                                    [](const auto& submatch) { return submatch.matched; });
    if (group == part->end()) return true;
    const auto subject = static_cast<std::size_t>(std::distance(part->begin(), group)) - 1;
    if (!anyValue({group->first, group->second}, key[subject])) return false;
  }
  return true;
}

std::string alternatives(const std::vector<std::string>& values) {
  std::string text;
  for (const std::string& value : values) text.append(text.empty() ? "(?:" : "|").append(value);
  return text + ")";
}

/// The fields of the line one behind the other, so that a match never has to search.
std::string expressionOf(std::string_view condition) {
  std::array<std::string, kSubjects> fields;
  fields.fill("[^;]*");
  for (const RuleTerm& term : termsOf(condition)) {
    fields[static_cast<std::size_t>(term.subject)] = alternatives(term.values);
  }
  std::string text;
  for (const std::string& field : fields) text.append(field).append(";");
  return text;
}

}  // namespace

std::string lineOf(const KeyTexts& key) {
  std::string text;
  for (const std::string_view field : key) text.append(field).append(";");
  return text;
}

std::vector<PropertyListView> matchByRegexOfText(PropertyListView rules, const std::string& line) {
  std::vector<PropertyListView> styles;
  for (const PropertyListView rule : rules.items()) {
    const std::regex expression(expressionOf(*rule.items()[0].string()));
    if (std::regex_match(line, expression)) styles.push_back(rule.items()[1]);
  }
  return styles;
}

std::vector<PropertyListView> matchByWalkingRegex(PropertyListView rules, const KeyTexts& key) {
  std::vector<PropertyListView> styles;
  for (const PropertyListView rule : rules.items()) {
    if (holds(*rule.items()[0].string(), key)) styles.push_back(rule.items()[1]);
  }
  return styles;
}

CompiledRegexRules::CompiledRegexRules(PropertyListView rules) {
  for (const PropertyListView rule : rules.items()) {
    rules_.push_back({std::regex(expressionOf(*rule.items()[0].string()), std::regex::optimize),
                      rule.items()[1]});
  }
}

std::vector<PropertyListView> CompiledRegexRules::matching(const std::string& line) const {
  std::vector<PropertyListView> styles;
  for (const Rule& rule : rules_) {
    if (std::regex_match(line, rule.expression)) styles.push_back(rule.style);
  }
  return styles;
}

}  // namespace bench
