#include "scenario/expectation.h"

#include <gtest/gtest.h>

namespace tools::scenario {
namespace {

using Json = nlohmann::ordered_json;

/// The messages of judging `came` as a result, one a line.
std::string judged(std::string_view expected, std::string_view came) {
  Expectation expectation;
  expectation.result = Json::parse(expected);
  std::string messages;
  for (const auto& mismatch : judge(expectation, {{"result", Json::parse(came)}})) {
    messages += mismatch.message() + "\n";
  }
  return messages;
}

TEST(Expectation, Holds) {
  struct Case {
    std::string_view expected;
    std::string_view came;
  };
  constexpr Case kCases[] = {
      {"null", "null"},
      {"1", "1.0000009"},
      {"1.000001", "1"},
      {"-0.0", "0"},
      {"320", "320.0"},
      {"9007199254740993", "9007199254740993"},
      {"true", "true"},
      {R"("a")", R"("a")"},
      {R"("~a+")", R"("aaa")"},
      {R"("~")", R"("")"},
      {"{}", R"({"a": 1})"},
      {R"({"b": {"c": null}})", R"({"a": 1, "b": {"c": null, "d": 2}})"},
      {"[]", "[]"},
      {R"([{"a": 1}, "~.*"])", R"([{"a": 1, "b": 2}, "x"])"},
  };
  for (const auto& [expected, came] : kCases) EXPECT_EQ(judged(expected, came), "") << expected;
}

TEST(Expectation, SaysWhereAndWhatCame) {
  struct Case {
    std::string_view expected;
    std::string_view came;
    std::string_view message;
  };
  constexpr Case kCases[] = {
      {"null", "0", "/result: expected null, came 0\n"},
      {"1", "null", "/result: expected 1, came null\n"},
      {"1", "1.0000011", "/result: expected 1, came 1.0000011\n"},
      {"1.0000011", "1", "/result: expected 1.0000011, came 1\n"},
      {"9007199254740993", "9007199254740992",
       "/result: expected 9007199254740993, came 9007199254740992\n"},
      {"1", "true", "/result: expected 1, came true\n"},
      {R"("1")", "1", "/result: expected \"1\", came 1\n"},
      {R"("a")", R"("A")", "/result: expected \"a\", came \"A\"\n"},
      {R"("~a")", R"("aa")", "/result: expected text like \"~a\", came \"aa\"\n"},
      {R"("~1")", "1", "/result: expected text like \"~1\", came 1\n"},
      {"{}", "null", "/result: expected {}, came null\n"},
      {"[]", "{}", "/result: expected [], came {}\n"},
      {R"({"a/b": null})", "{}", "/result/a~1b: expected null, came no such member\n"},
      {R"({"a": 1, "b": [1, 2]})", R"({"a": 2, "b": [1, 3]})",
       "/result/a: expected 1, came 2\n/result/b/1: expected 2, came 3\n"},
      {"[1]", "[1, 2]",
       "/result: expected 1 element [1], came 2 elements [1,2], the first difference at 1\n"},
      {R"(["a", "b"])", R"(["b"])",
       "/result: expected 2 elements [\"a\",\"b\"], came 1 element [\"b\"], the first difference "
       "at "
       "0\n"},
  };
  for (const auto& [expected, came, message] : kCases) {
    EXPECT_EQ(judged(expected, came), message) << expected;
  }
}

TEST(Expectation, LooksOnlyAtTheGivenParts) {
  const Json output = {{"step", 0}, {"do", "load"}, {"log", {"a"}}, {"reads", {"/b"}}};
  Expectation expectation;
  EXPECT_TRUE(judge(expectation, output).empty());
  expectation.reads = Json{"/b"};
  EXPECT_TRUE(judge(expectation, output).empty());
  expectation.log = Json{"b"};
  expectation.events = Json::array();
  const auto mismatches = judge(expectation, output);
  ASSERT_EQ(mismatches.size(), 2U);
  EXPECT_EQ(mismatches[0].place, "/log/0");
  EXPECT_EQ(mismatches[1].message(), "/events: expected [], came no such member");
}

TEST(Expectation, ShortensAndSurvivesAnyText) {
  Expectation expectation;
  expectation.result = "a";
  const auto mismatches = judge(expectation, {{"result", std::string(100'000, '\xFF')}});
  ASSERT_EQ(mismatches.size(), 1U);
  EXPECT_LT(mismatches[0].came.size(), 1000U);
  EXPECT_TRUE(mismatches[0].came.ends_with("\xEF\xBF\xBD..."));
}

}  // namespace
}  // namespace tools::scenario
