#include "command_line/suggestion.h"

#include <gtest/gtest.h>

namespace tools::command_line {
namespace {

TEST(Suggestion, IsTheNearestWordWithinAThird) {
  const std::vector<std::string> words = {"render", "replay", "keys", "names", "new", "convert"};
  struct Case {
    std::string_view mistyped;
    std::optional<std::string> meant;
  };
  const Case cases[] = {
      {"rendr", "render"},
      {"redner", "render"},
      {"renderr", "render"},
      {"rander", "render"},
      {"rndr", "render"},
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
    EXPECT_EQ(suggestionFor(mistyped, words), meant) << mistyped;
  }
  EXPECT_EQ(suggestionFor("render", {}), std::nullopt);
}

TEST(Suggestion, PrefersTheFirstOfEquallyNearWords) {
  EXPECT_EQ(suggestionFor("bender", {"render", "gender"}), "render");
  EXPECT_EQ(suggestionFor("bender", {"gender", "render"}), "gender");
}

}  // namespace
}  // namespace tools::command_line
