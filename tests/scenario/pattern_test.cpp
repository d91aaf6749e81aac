#include "scenario/pattern.h"

#include <gtest/gtest.h>

namespace tools::scenario {
namespace {

std::string repeated(std::string_view text, std::size_t times) {
  std::string all;
  for (; times != 0; --times) all += text;
  return all;
}

TEST(Pattern, MatchesTheWholeText) {
  struct Case {
    std::string_view pattern;
    std::string_view text;
    bool matches;
  };
  constexpr Case kCases[] = {
      {"a.c", "abc", true},
      {"a.c", "abcd", false},
      {"a.c", "xabc", false},
      {"^a.c$", "abc", true},
      {"", "", true},
      {"", "a", false},
      {"a|ab", "ab", true},
      {"(a|ab)(c|bcd)(d*)", "abcd", true},
      {"(a*)+", "aaa", true},
      {"(a*)*b", "aaa", false},
      {"(?:a?){3}", "aaaa", false},
      {"[0-9]+?", "123", true},
      {"(?!PM).*", "PM: x", false},
      {"(?=PM).*", "PM: x", true},
      {"\\w+\\b.\\d", "abc 1", true},
      {".+", "a\nb", false},
      {"a\\/b\\-c", "a/b-c", true},
      {"(.)\\1", "aa", true},  // back reference
      {"(.)\\1", "ab", false},
      {"..", "é☃", true},  // characters, not bytes
      {"[é]", "é", true},
      {"\\u00e9", "é", true},
      {".", "\xFF", true},
      {"E: {G = A; }", "E: {G = A; }", true},  // braces for themselves
      {"a{2}{", "aa{", true},
      {"a{2,}}", "aaa}", true},
      {"[{}]{1,2}\\{", "{}{", true},
  };
  for (const auto& [pattern, text, matches] : kCases) {
    const auto match = matchWhole(pattern, text);
    EXPECT_EQ(match.matches, matches) << pattern << " on " << text;
    EXPECT_EQ(match.fault, "") << pattern;
  }
}

TEST(Pattern, RefusesWhatIsNone) {
  for (const auto* pattern : {"(", ")", "[", "*", "\\", "a{2,1}", "[b-a]", "(?<=a)b"}) {
    EXPECT_TRUE(patternFault(pattern)) << pattern;
    EXPECT_NE(matchWhole(pattern, "").fault, "") << pattern;
  }
  EXPECT_EQ(patternFault(repeated("a", kMaxPatternLength)), std::nullopt);
  EXPECT_EQ(patternFault(repeated("a", kMaxPatternLength + 1)), "longer than 10000 characters");
  EXPECT_EQ(patternFault("(a{1000}){1000}"), "its repetitions make it too large");
}

TEST(Pattern, NeitherLengthNorAmbiguityOverwhelmsIt) {
  const auto text = std::string(100'000, 'a');
  EXPECT_TRUE(matchWhole("(?:a|b)*", text).matches);
  EXPECT_TRUE(matchWhole(".+", text).matches);
  EXPECT_FALSE(matchWhole("(a*)*b", text).matches);
  EXPECT_TRUE(matchWhole(repeated("(", 5000) + repeated(")", 5000), "").matches);
  EXPECT_TRUE(matchWhole(repeated("a?", 1000), std::string(20, 'a')).matches);
}

TEST(Pattern, BackReferencesAreBounded) {
  EXPECT_TRUE(matchWhole("(.)(?:a|b)*\\1", std::string(kMaxBackReferenceTextLength, 'a')).matches);
  EXPECT_EQ(matchWhole("(.).*\\1", std::string(kMaxBackReferenceTextLength + 1, 'a')).fault,
            "a pattern with back references is tried on at most 10000 characters");
}

}  // namespace
}  // namespace tools::scenario
