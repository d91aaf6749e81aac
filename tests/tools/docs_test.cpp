// What the documents tell people to type does what they say.

#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>

#include "command.h"

namespace {

class Docs : public Command {
 protected:
  std::string page(const std::string& name) const {
    std::string text = read(std::filesystem::path(PRISMAL_DOCS) / name);
    EXPECT_FALSE(text.empty()) << name;
    return text;
  }

  /// All matches' first group.
  static std::set<std::string> found(const std::string& text, const std::regex& pattern) {
    std::set<std::string> all;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end;
         ++match) {
      all.insert((*match)[1]);
    }
    return all;
  }
};

TEST_F(Docs, TheFirstThemeIsWithoutFault) {
  const std::string text = page("theme-format.md");
  const std::string fence = "```xml\n";
  const auto start = text.find(fence, text.find("\n## A first theme\n"));
  ASSERT_NE(start, std::string::npos);
  const auto from = start + fence.size();
  write("First.theme/theme.plist", text.substr(from, text.find("```", from) - from));
  const Outcome checked = prismal("check First.theme");
  EXPECT_EQ(checked.status, 0) << checked.output;
  EXPECT_EQ(prismal("render --quiet First.theme -o first.png").status, 0);
}

// A line of a document that stands for itself, such as "    prismal check THEME".
TEST_F(Docs, CommandLinesNameWhatThereIs) {
  const std::regex line("\n    prismal ([a-z][^\n]*)");
  const std::regex option("(--[a-z][a-z-]*)");
  std::size_t lines = 0;
  for (const std::string name : {"../README.md", "command.md", "theme-format.md", "checks.md"}) {
    for (const std::string& arguments : found(page(name), line)) {
      const std::string command = arguments.substr(0, arguments.find(' '));
      const Outcome help = prismal(command + " --help");
      EXPECT_EQ(help.status, 0) << name << ": " << arguments;
      const Outcome nested = prismal(command + " background --help");
      for (const std::string& each : found(arguments, option)) {
        EXPECT_NE((help.output + nested.output).find(each), std::string::npos)
            << name << ": " << arguments;
      }
      ++lines;
    }
  }
  EXPECT_GE(lines, 15U);
}

}  // namespace
