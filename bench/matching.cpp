// One key against a rule list, whose conditions are walked as text, against rules compiled before.

#include <memory>

#include "compiled_rules.h"
#include "contest.h"
#include "regex_rules.h"
#include "rows.h"
#include "sample_theme.h"
#include "styles/style_matching.h"

namespace bench {

namespace {

prismal::KeyIdentity sampleIdentity() {
  return prismal::KeyIdentity({.name = "Latin-Small-Letter-Q",
                               .displayTypeName = "UIKBKeyDisplayTypeLetter",
                               .displayTypeHint = 0,
                               .displayRowHint = 1});
}

using Rules = std::shared_ptr<platform::PropertyList>;

auto matchText(const Rules& rules) {
  return [rules](benchmark::State& state) {
    const auto key = sampleIdentity();
    for (auto _ : state) {
      benchmark::DoNotOptimize(prismal::PMGetMatchingStyles(*rules, key, kSampleControlState));
    }
  };
}

auto matchCompiled(const Rules& rules) {
  return [rules](benchmark::State& state) {
    CompiledRules compiled(*rules);
    const auto key = compiled.key(kSampleKey);
    for (auto _ : state) benchmark::DoNotOptimize(compiled.matching(key));
  };
}

auto matchRegexOfText(const Rules& rules) {
  return [rules](benchmark::State& state) {
    const auto line = lineOf(kSampleKey);
    for (auto _ : state) benchmark::DoNotOptimize(matchByRegexOfText(*rules, line));
  };
}

auto matchWalkingRegex(const Rules& rules) {
  return [rules](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(matchByWalkingRegex(*rules, kSampleKey));
  };
}

auto matchCompiledRegex(const Rules& rules) {
  return [rules](benchmark::State& state) {
    const CompiledRegexRules expressions(*rules);
    const auto line = lineOf(kSampleKey);
    for (auto _ : state) benchmark::DoNotOptimize(expressions.matching(line));
  };
}

}  // namespace

void addMatchingContests() {
  for (const std::size_t count : {10U, 100U, 1'000U, 10'000U}) {
    const auto rules = std::make_shared<platform::PropertyList>(ruleList(count));
    const std::string what = "matching a key, " + std::to_string(count) + " rules";
    addContest({what, "rules compiled to integers", 5}, matchText(rules), matchCompiled(rules));
    addContest({what, "std::regex of each condition", 0.006}, matchText(rules),
               matchRegexOfText(rules));
  }
  const auto rules = std::make_shared<platform::PropertyList>(ruleList(1'000));
  addContest({"matching a key, 1000 rules", "two std::regex, compiled beforehand", 0},
             matchText(rules), matchWalkingRegex(rules));
  addContest({"matching a key, 1000 rules", "a std::regex a rule, compiled beforehand", 0},
             matchText(rules), matchCompiledRegex(rules));
}

}  // namespace bench
