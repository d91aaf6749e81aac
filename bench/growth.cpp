// How the time grows with what a theme holds and a keyboard asks: lines from 10 to 100,000.
// Usage: prismal_growth [options of Google Benchmark]. Prints a line a point: what, how many, and
// nanoseconds for all of them, between tabs.

#include <array>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "backgrounds/background_filenames.h"
#include "colors/color_cache.h"
#include "contest.h"
#include "device.h"
#include "host/keyboard/keyboard.h"
#include "host/keyboard/tree.h"
#include "host/plist/builder.h"
#include "host/plist/reader.h"
#include "host/plist/writer.h"
#include "rule_terms.h"
#include "sample_theme.h"
#include "styles/style_matching.h"
#include "times.h"

namespace {

using platform::PropertyList;

constexpr std::array<std::size_t, 9> kCounts = {10,    32,     100,    316,    1'000,
                                                3'162, 10'000, 31'623, 100'000};

/// One line of the plot. `prepare` makes the work for a count.
struct Line {
  const char* name;
  std::function<std::function<void()>(std::size_t)> prepare;
};

std::function<void()> buildColors(std::size_t count) {
  return [section = std::make_shared<PropertyList>(bench::colorSection(count))] {
    prismal::PMRebuildColorCache(*section);
  };
}

std::function<void()> readColors(std::size_t count) {
  return [text = host::plist::writeXml(bench::colorSection(count))] {
    benchmark::DoNotOptimize(host::plist::read(text));
  };
}

std::function<void()> askColors(std::size_t count) {
  auto names = std::make_shared<std::vector<std::string>>();
  for (std::size_t i = 0; i < count; ++i) names->push_back(bench::colorName(i));
  prismal::PMRebuildColorCache(bench::colorSection(count));
  return [names] {
    for (const std::string& name : *names) {
      benchmark::DoNotOptimize(platform::UIKBGetNamedColor(name));
    }
  };
}

std::function<void()> matchRules(std::size_t count) {
  return [rules = std::make_shared<PropertyList>(bench::ruleList(count)),
          key = prismal::KeyIdentity(bench::sampleKey())] {
    benchmark::DoNotOptimize(prismal::PMGetMatchingStyles(*rules, key, bench::kSampleControlState));
  };
}

std::function<void()> askKeys(std::size_t count) {
  return [count] {
    const auto factory = host::keyboard::keyboard().factory.get();
    for (std::size_t i = 0; i < count; ++i) {
      const platform::NSAutoreleasePool pool;
      benchmark::DoNotOptimize(
          host::keyboard::askTraits(factory, bench::sampleKey(), bench::sampleKeyplane()));
    }
  };
}

std::function<void()> buildImages(std::size_t count) {
  return [images = std::make_shared<PropertyList>(bench::imageSection(count, "/behind.png"))] {
    benchmark::DoNotOptimize(prismal::buildBackgroundFilenames(*images, {}));
  };
}

/// The user's pictures, each of which takes the place of all that the theme has for its pair.
std::function<void()> overrideImages(std::size_t count) {
  host::plist::Builder builder;
  std::vector<platform::PropertyListEntry> styles;
  for (std::size_t i = 0; i < count; ++i) {
    const std::array<platform::PropertyListEntry, 1> style = {
        {{"Portrait", builder.string("/mine.png")}}};
    styles.push_back({builder.keep("style " + std::to_string(i)), builder.dictionary(style)});
  }
  const auto user = std::make_shared<PropertyList>(builder.finish(builder.dictionary(styles)));
  const auto theme = std::make_shared<PropertyList>(bench::imageSection(count, "/behind.png"));
  return
      [user, theme] { benchmark::DoNotOptimize(prismal::buildBackgroundFilenames(*theme, *user)); };
}

const Line kLines[] = {
    {"colours: reading the file", readColors},      {"colours: building the cache", buildColors},
    {"colours: asking for each", askColors},        {"rules: matching one key", matchRules},
    {"keys: asking for their traits", askKeys},     {"images: building the table", buildImages},
    {"images: the user's own too", overrideImages},
};

std::string nameOf(const Line& line, std::size_t count) {
  return line.name + ("/" + std::to_string(count));
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const platform::NSAutoreleasePool pool;
  bench::startDevice();
  for (const Line& line : kLines) {
    for (const std::size_t count : kCounts) {
      bench::addBenchmark(nameOf(line, count), [&line, count](benchmark::State& state) {
        const auto work = line.prepare(count);
        for (auto _ : state) work();
      });
    }
  }
  bench::Times times;
  benchmark::RunSpecifiedBenchmarks(&times);
  for (const Line& line : kLines) {
    for (const std::size_t count : kCounts) {
      const bench::Time time = times.of(nameOf(line, count));
      std::printf("%s\t%zu\t%.0f\n", line.name, count, time.least_ns);
    }
  }
  return 0;
}
