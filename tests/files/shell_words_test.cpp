#include "host/files/shell_words.h"

#include <gtest/gtest.h>

namespace host::files {
namespace {

// Stands for what names a path: <path|pattern>, with a minus where the program removes it.
std::optional<std::string> mark(const PathWord& word) {
  return (word.removed ? "<-" : "<") + word.path + '|' + word.pattern + '>';
}

struct Case {
  std::string_view command;
  std::string_view rewritten;
};

class RewriteDevicePaths : public testing::TestWithParam<Case> {};

TEST_P(RewriteDevicePaths, MarksEachPath) {
  const auto rewritten = rewriteDevicePaths(GetParam().command, mark);
  ASSERT_TRUE(rewritten);
  EXPECT_EQ(*rewritten, GetParam().rewritten);
}

INSTANTIATE_TEST_SUITE_P(
    Programs, RewriteDevicePaths,
    testing::ValuesIn<Case>(
        {{"", ""},
         {"/bin/rm -rf /var/mobile/Library/Caches/com.apple.keyboards/*",
          "/bin/rm -rf <-/var/mobile/Library/Caches/com.apple.keyboards/|*>"},
         {"rm /a /b", "rm <-/a|> <-/b|>"},
         {"  /bin/cat\t/a  b/c /d/ ", "  /bin/cat\t</a|>  b/c </d/|> "},
         {"/bin/a /x; /bin/b /y", "/bin/a </x|>; /bin/b </y|>"},
         {"/bin/a /x&&/bin/rm /y||/bin/c /z", "/bin/a </x|>&&/bin/rm <-/y|>||/bin/c </z|>"},
         {"(/bin/a /x) | /bin/b\n/bin/c /y&", "(/bin/a </x|>) | /bin/b\n/bin/c </y|>&"},
         {"if /bin/a /x; then ! /bin/b; fi", "if /bin/a </x|>; then ! /bin/b; fi"},
         {"A=/x B_1=2 /bin/a /y", "A=/x B_1=2 /bin/a </y|>"},
         {"1A=x /y", "1A=x </y|>"},
         {"/bin/a # don't /x\n/bin/b /y", "/bin/a # don't /x\n/bin/b </y|>"},
         {"a#b /x", "a#b </x|>"}}));

INSTANTIATE_TEST_SUITE_P(
    Redirections, RewriteDevicePaths,
    testing::ValuesIn<Case>({{"/bin/a >/x", "/bin/a ></x|>"},
                             {">/x /bin/a /y", "></x|> /bin/a </y|>"},
                             {"2>>/x /bin/a </y", "2>></x|> /bin/a <</y|>"},
                             {"/bin/a /x >/dev/null 2>&1 /y", "/bin/a </x|> >/dev/null 2>&1 </y|>"},
                             {"/bin/rm /x >|/y", "/bin/rm <-/x|> >|</y|>"},
                             {"/bin/a >/dev/null2", "/bin/a ></dev/null2|>"}}));

INSTANTIATE_TEST_SUITE_P(Quotes, RewriteDevicePaths,
                         testing::ValuesIn<Case>({{R"(rm '/a b'/c)", "rm <-/a b/c|>"},
                                                  {R"(rm "/a 'b'")", "rm <-/a 'b'|>"},
                                                  {R"(rm /a\ b\*)", "rm <-/a b*|>"},
                                                  {R"(rm "/a\"\$\x")", R"(rm <-/a"$\x|>)"},
                                                  {R"(rm '/a*'/b?)", "rm <-/a*/|b?>"},
                                                  {R"(rm /a/'x y'*[!"a"])",
                                                   "rm <-/a/|'x'' ''y'*[!'a']>"},
                                                  {R"(rm /a/*\'b)", R"(rm <-/a/|*''\'''b>)"},
                                                  {R"(rm '$x' "a b" \$)", R"(rm '$x' "a b" \$)"},
                                                  {"rm /a\\\nb", "rm <-/ab|>"},
                                                  {"'/bin/rm' /a", "'/bin/rm' <-/a|>"},
                                                  {"echo 'a;rm' /b", "echo 'a;rm' </b|>"}}));

TEST(RewriteDevicePaths, RefusesWhatItCannotHoldInside) {
  for (const std::string_view command :
       {"rm -rf /a/*/b", "rm -rf /a?/", "cat /a/*", "cat >/a*", "rm /a$x", "rm $x", "rm \"$x\"",
        "rm `x`", "rm \"`x`\"", "rm ~/x", "$x /a", "rm '/a", "rm \"/a", "rm \"/a\\\""}) {
    EXPECT_FALSE(rewriteDevicePaths(command, mark)) << command;
  }
}

TEST(RewriteDevicePaths, RefusesAPathWithoutAName) {
  const auto none = [](const PathWord&) { return std::nullopt; };
  EXPECT_FALSE(rewriteDevicePaths("rm /a", none));
  EXPECT_EQ(rewriteDevicePaths("/bin/rm a", none), "/bin/rm a");
}

TEST(QuotedForShell, QuotesEverything) {
  EXPECT_EQ(quotedForShell("a b"), "'a b'");
  EXPECT_EQ(quotedForShell("it's $x"), R"('it'\''s $x')");
  EXPECT_EQ(quotedForShell(""), "''");
}

}  // namespace
}  // namespace host::files
