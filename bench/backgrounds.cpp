// A background request that has been answered before, against one formatted key and one look-up.

#include <array>
#include <charconv>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>

#include "backgrounds/background_lookup.h"
#include "contest.h"
#include "device.h"
#include "rows.h"

namespace bench {

namespace {

constexpr std::string_view kOrientation = "Portrait";
constexpr std::string_view kVisualStyle = "iPhone-Standard";

void askBackground(benchmark::State& state) {
  const auto ask = [] {
    return prismal::PMGetKeyboardBackgroundImage(sampleKeyplane(), kOrientation, kVisualStyle,
                                                 prismal::PMKeyplaneSmallLetters);
  };
  const platform::NSAutoreleasePool pool;
  if (!ask()) state.SkipWithError("the device has no picture");
  for (auto _ : state) benchmark::DoNotOptimize(ask());
}

/// Two texts and two numbers, with semicolons between them, in characters of the caller.
class KeyWriter {
 public:
  std::string_view write(std::string_view orientation, std::string_view style, std::uint64_t index,
                         std::uint64_t variant) {
    end_ = text_.data();
    append(orientation);
    append(";");
    append(style);
    append(";");
    append(index);
    append(";");
    append(variant);
    return {text_.data(), end_};
  }

 private:
  void append(std::string_view part) {
    std::memcpy(end_, part.data(), part.size());
    end_ += part.size();
  }
  void append(std::uint64_t number) {
    end_ = std::to_chars(end_, text_.data() + text_.size(), number).ptr;
  }

  std::array<char, 96> text_;
  char* end_ = nullptr;
};

struct Hash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const {
    return std::hash<std::string_view>()(text);
  }
};

void findFormatted(benchmark::State& state) {
  const std::unordered_map<std::string, int, Hash, std::equal_to<>> images = {
      {"Portrait;iPhone-Standard;1;25842", 1}};
  std::string_view orientation = kOrientation;
  std::string_view style = kVisualStyle;
  std::uint64_t index = 1;
  std::uint64_t variant = 25'842;
  KeyWriter writer;
  for (auto _ : state) {
    benchmark::DoNotOptimize(orientation);
    benchmark::DoNotOptimize(style);
    benchmark::DoNotOptimize(index);
    benchmark::DoNotOptimize(variant);
    const auto found = images.find(writer.write(orientation, style, index, variant));
    benchmark::DoNotOptimize(found->second);
  }
}

}  // namespace

void addBackgroundContest() {
  addContest({"repeated background request", "std::unordered_map find of a formatted key", 1.3},
             askBackground, findFormatted);
}

}  // namespace bench
