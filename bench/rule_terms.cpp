#include "rule_terms.h"

#include <algorithm>
#include <iterator>

namespace bench {

namespace {

constexpr std::string_view kNames[kSubjects] = {"DisplayTypeHint", "DisplayType", "ControlState",
                                                "Row", "KeyName"};

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  for (;;) {
    const auto end = text.find(separator);
    parts.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

RuleTerm termOf(const std::string& text) {
  const auto equals = text.find('=');
  const auto* const name = std::ranges::find(kNames, std::string_view(text).substr(0, equals));
  RuleTerm term{static_cast<Subject>(std::distance(kNames, name)),
                split(std::string_view(text).substr(equals + 1), ',')};
  if (term.subject == Subject::kDisplayType) {
    for (std::string& value : term.values) std::erase(value, '-');
  }
  return term;
}

}  // namespace

std::vector<RuleTerm> termsOf(std::string_view condition) {
  std::vector<RuleTerm> terms;
  for (const std::string& text : split(condition, ';')) {
    if (text == "*") break;
    terms.push_back(termOf(text));
  }
  return terms;
}

}  // namespace bench
