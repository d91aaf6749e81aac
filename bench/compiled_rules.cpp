#include "compiled_rules.h"

namespace bench {

using platform::PropertyListView;

namespace {

std::uint32_t sizeOf(const auto& vector) {
  return static_cast<std::uint32_t>(vector.size());
}

}  // namespace

CompiledRules::CompiledRules(PropertyListView rules) {
  for (const PropertyListView rule : rules.items()) {
    add(*rule.items()[0].string(), rule.items()[1]);
  }
}

std::uint32_t CompiledRules::numberOf(std::string_view text) {
  return numbers_.try_emplace(std::string(text), sizeOf(numbers_)).first->second;
}

void CompiledRules::add(std::string_view condition, PropertyListView style) {
  const std::uint32_t firstTerm = sizeOf(terms_);
  for (const RuleTerm& term : termsOf(condition)) {
    const std::uint32_t firstValue = sizeOf(values_);
    for (const std::string& value : term.values) values_.push_back(numberOf(value));
    terms_.push_back({static_cast<std::uint32_t>(term.subject), firstValue, sizeOf(values_)});
  }
  rules_.push_back({firstTerm, sizeOf(terms_), style});
}

CompiledRules::Key CompiledRules::key(const std::array<std::string_view, kSubjects>& texts) {
  Key key{};
  for (std::size_t i = 0; i < kSubjects; ++i) key[i] = numberOf(texts[i]);
  return key;
}

bool CompiledRules::holds(const Term& term, const Key& key) const {
  const std::uint32_t wanted = key[term.subject];
  for (std::uint32_t i = term.firstValue; i < term.endValue; ++i) {
    if (values_[i] == wanted) return true;
  }
  return false;
}

bool CompiledRules::holds(const Rule& rule, const Key& key) const {
  for (std::uint32_t i = rule.firstTerm; i < rule.endTerm; ++i) {
    if (!holds(terms_[i], key)) return false;
  }
  return true;
}

std::vector<PropertyListView> CompiledRules::matching(const Key& key) const {
  std::vector<PropertyListView> styles;
  for (const Rule& rule : rules_) {
    if (holds(rule, key)) styles.push_back(rule.style);
  }
  return styles;
}

}  // namespace bench
