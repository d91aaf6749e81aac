#include "scenario/json_output.h"

#include <gtest/gtest.h>
#include <limits>

namespace tools::scenario {
namespace {

TEST(JsonOutput, WritesNumbersShort) {
  using Limits = std::numeric_limits<double>;
  struct Case {
    double value;
    std::string_view text;
  };
  constexpr Case kCases[] = {
      {320, "320"},
      {20.5, "20.5"},
      {-0.0, "0"},
      {-40, "-40"},
      {0.1, "0.1"},
      {1e15, "1000000000000000"},
      {1e300, "1e+300"},
      {Limits::infinity(), "null"},
      {Limits::quiet_NaN(), "null"},
  };
  for (const auto& [value, text] : kCases) EXPECT_EQ(line(number(value)), text);
}

TEST(JsonOutput, IsOneLineInTheOrderOfWriting) {
  const nlohmann::ordered_json value = {
      {"z", "a\nb\x1f"}, {"a", {number(1), nullptr}}, {"bytes", "x\xFFy\xC3"}};
  EXPECT_EQ(line(value),
            "{\"z\":\"a\\nb\\u001f\",\"a\":[1,null],\"bytes\":\"x\xEF\xBF\xBDy\xEF\xBF\xBD\"}");
}

}  // namespace
}  // namespace tools::scenario
