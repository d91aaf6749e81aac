// The whole request for a key's traits against what it can't do without: the platform's own
// request, the matching, and the look-ups of the rule list and of the gradients that are set.

#include <string_view>
#include <vector>

#include "contest.h"
#include "device.h"
#include "hooks/class_references.h"
#include "hooks/previous_implementations.h"
#include "host/keyboard/keyboard.h"
#include "rows.h"
#include "rule_terms.h"
#include "styles/key_identity.h"
#include "styles/style_matching.h"
#include "styles/style_table.h"

namespace bench {

namespace {

void askTraits(benchmark::State& state) {
  const auto factory = host::keyboard::keyboard().factory.get();
  while (state.KeepRunning()) {
    const platform::NSAutoreleasePool pool;
    benchmark::DoNotOptimize(host::keyboard::askTraits(factory, sampleKey(), sampleKeyplane()));
  }
}

void askPlatform(benchmark::State& state) {
  const auto factory = host::keyboard::keyboard().factory.get();
  const auto selector = platform::sel_registerName("traitsForKey:onKeyplane:");
  while (state.KeepRunning()) {
    const platform::NSAutoreleasePool pool;
    benchmark::DoNotOptimize(
        prismal::previous.traitsForKey(factory, selector, sampleKey(), sampleKeyplane()));
  }
}

auto matchingStyles() {
  return prismal::PMGetMatchingStyles(prismal::PMGetStyles("iPhone-Standard"),
                                      prismal::KeyIdentity(sampleKey()), kSampleControlState);
}

void matchRules(benchmark::State& state) {
  const auto rules = prismal::PMGetStyles("iPhone-Standard");
  const prismal::KeyIdentity key(sampleKey());
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(prismal::PMGetMatchingStyles(rules, key, kSampleControlState));
  }
}

void lookUp(benchmark::State& state) {
  std::vector<std::string_view> names;
  for (const auto style : matchingStyles()) {
    names.push_back(*style.objectForKey("BackgroundGradient").string());
  }
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(prismal::PMGetStyles("iPhone-Standard"));
    for (const auto name : names) {
      benchmark::DoNotOptimize(
          platform::UIKBGradient::gradientWithName(prismal::classes.UIKBGradient, name));
    }
  }
}

}  // namespace

void addTraitsContest() {
  const std::string what = "traits of a key, 100 rules, 5 hold";
  const std::size_t contest =
      addContest({what, "matching, look-ups and the platform's own request", 1.3});
  const auto add = [&](const char* name, bool isFloor, void (*run)(benchmark::State&)) {
    count(contest, isFloor, what + "/" + name);
    addBenchmark(what + "/" + name, run);
  };
  add("prismal", false, askTraits);
  add("floor: platform", true, askPlatform);
  add("floor: matching", true, matchRules);
  add("floor: look-ups", true, lookUp);
}

}  // namespace bench
