#include "suggestion.h"

#include <gtest/gtest.h>

namespace tools {
namespace {

TEST(Suggestion, IsTheNearestWordWithinAThird) {
  constexpr std::string_view kWords[] = {"render", "replay", "keys", "names", "new", "convert"};
  struct Case {
    std::string_view mistyped;
    std::optional<std::string> meant;
  };
  const Case cases[] = {
      {"rendr", "render"},
      {"redner", "render"},
      {"renderr", "render"},
      {"rander", "render"},
      {"rndr", {}},
      {"rnd", {}},
      {"kyes", "keys"},
      {"key", "keys"},
      {"kesy", "keys"},
      {"k", {}},
      {"name", "names"},
      {"nwe", "new"},
      {"ne", "new"},
      {"covnert", "convert"},
      {"Render", "render"},
      {"paint", {}},
      {"", {}},
      {"renderrender", {}},
      {"rendre", "render"},
      {"nws", {}},
  };
  for (const auto& [mistyped, meant] : cases) {
    EXPECT_EQ(nearest(mistyped, kWords), meant) << mistyped;
  }
  EXPECT_EQ(nearest("render", {}), std::nullopt);
}

TEST(Suggestion, PrefersTheFirstOfEquallyNearWords) {
  constexpr std::string_view kOneWay[] = {"render", "gender"};
  constexpr std::string_view kTheOther[] = {"gender", "render"};
  EXPECT_EQ(nearest("bender", kOneWay), "render");
  EXPECT_EQ(nearest("bender", kTheOther), "gender");
}

}  // namespace
}  // namespace tools
