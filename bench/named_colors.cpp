// A named-colour request, through the keyboard's own function, against hash tables of the same
// names and colours.

#include <algorithm>
#include <boost/unordered/unordered_flat_map.hpp>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "colors/color_cache.h"
#include "contest.h"
#include "platform/keyboard.h"
#include "rows.h"
#include "sample_theme.h"

namespace bench {

namespace {

using Color = platform::Retained<platform::CGColorRef>;

struct Hash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const {
    return std::hash<std::string_view>()(text);
  }
};
using StandardMap = std::unordered_map<std::string, Color, Hash, std::equal_to<>>;
using FlatMap = boost::unordered_flat_map<std::string, Color, Hash, std::equal_to<>>;

/// Names to ask for, in an order that follows nothing.
std::vector<std::string> shuffled(std::size_t count, std::string_view suffix) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < count; ++i) names.push_back(colorName(i).append(suffix));
  std::ranges::shuffle(names, std::mt19937(1));  // NOLINT(cert-msc*): the same in every run
  return names;
}

struct Asked {
  std::size_t count;
  platform::PropertyList section;
  std::vector<std::string> names;
};

/// Gives the keyboard the colours of `asked`, when it has others.
void load(const Asked& asked) {
  static const Asked* loaded = nullptr;
  if (loaded == &asked) return;
  prismal::PMRebuildColorCache(asked.section);
  loaded = &asked;
}

/// Goes through the names again and again.
template <class Request>
void askAll(benchmark::State& state, const Asked& asked, Request request) {
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(request(std::string_view(asked.names[next])));
    if (++next == asked.names.size()) next = 0;
  }
}

template <class Map>
std::shared_ptr<Map> mapOf(std::size_t count) {
  auto map = std::make_shared<Map>();
  map->reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    map->emplace(colorName(i), Color(platform::UIKBGetNamedColor("UIKBColorKeyLetter")));
  }
  return map;
}

template <class Map>
void addContestOf(const Contest& contest, const std::shared_ptr<Asked>& asked) {
  const auto map = mapOf<Map>(asked->count);
  addContest(
      contest,
      [asked](benchmark::State& state) {
        load(*asked);
        askAll(state, *asked,
               [](std::string_view name) { return platform::UIKBGetNamedColor(name); });
      },
      [asked, map](benchmark::State& state) {
        askAll(state, *asked, [&](std::string_view name) { return map->find(name) != map->end(); });
      });
}

std::shared_ptr<Asked> ask(std::size_t count, std::string_view suffix) {
  return std::make_shared<Asked>(Asked{count, colorSection(count), shuffled(count, suffix)});
}

}  // namespace

void addNamedColorContests() {
  for (const std::size_t count : {50U, 500U, 10'000U}) {
    const std::string what = "named colour of " + std::to_string(count);
    const auto hits = ask(count, "");
    addContestOf<StandardMap>({what + ", hit", "std::unordered_map find", 1.2}, hits);
    addContestOf<StandardMap>({what + ", miss", "std::unordered_map find", 1.2}, ask(count, "?"));
    if (count == 10'000) {
      addContestOf<FlatMap>({what + ", hit", "boost::unordered_flat_map find", 1.6}, hits);
    }
  }
}

}  // namespace bench
