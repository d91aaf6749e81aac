// The command line as a whole: help, slips, completions, the manual.

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "command.h"

namespace {

namespace fs = std::filesystem;

class CommandLine : public Command {
 protected:
  /// What `script` prints in a shell, in the folder.
  std::string shell(const std::string& program, const std::string& script) const {
    write("script", script);
    const std::string command =
        "cd '" + folder().string() + "' && " + program + " script > printed 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << read("printed");
    return read("printed");
  }

  static bool isInstalled(const std::string& program) {
    return std::system(("command -v " + program + " > /dev/null").c_str()) == 0;
  }

  /// The groups of all matches.
  static std::set<std::string> found(const std::string& text, const std::string& pattern) {
    std::set<std::string> all;
    const std::regex expression(pattern);
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
         ++match) {
      all.insert((*match)[1]);
    }
    return all;
  }

  std::set<std::string> commands() const {
    const std::string help = prismal("--help").output;
    auto names = found(help.substr(help.find("Subcommands:")), "\n  ([a-z]+) ");
    EXPECT_GE(names.size(), 5U) << help;
    return names;
  }

  std::set<std::string> optionsOf(const std::string& command) const {
    return found(prismal(command + " --help").output, "\n  (?:-[a-zA-Z],)?(--[a-z-]+)");
  }

  /// What bash proposes for the last word of `words`.
  std::string proposals(const std::string& words) const {
    return shell("bash", "source ./completion\nCOMP_WORDS=(" + words +
                             ")\nCOMP_CWORD=$(( ${#COMP_WORDS[@]} - 1 ))\n_prismal\n"
                             "printf '%s ' \"${COMPREPLY[@]}\"\n");
  }
};

TEST_F(CommandLine, WhatCannotBePrintedIsTold) {
  for (const std::string arguments :
       {"--help", "new --help", "--version", "format", "keys", "completion bash", "check --list"}) {
    const Outcome outcome = prismal(arguments, "2>&1 >/dev/full");
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.output.substr(0, 7), "prismal") << arguments;
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 1) << outcome.output;
  }
}

TEST_F(CommandLine, HelpHasExamplesForEveryCommand) {
  for (const std::string& command : commands()) {
    const Outcome help = prismal(command + " --help");
    EXPECT_EQ(help.status, 0) << command;
    EXPECT_TRUE(std::regex_search(help.output, std::regex("\nExamples?:[ \n]+prismal " + command)))
        << help.output;
  }
}

TEST_F(CommandLine, SlipsAreToldFromOtherWords) {
  struct Case {
    std::string arguments;
    std::string message;
  };
  const Case cases[] = {
      {"rendr x", "prismal: no command rendr; did you mean render?\n"},
      {"paint", "prismal: no command paint; --help lists them all\n"},
      {"'\x1B[2J'", "prismal: no command \\u001b[2J; --help lists them all\n"},
      {"manua", "prismal: no command manua; --help lists them all\n"},
  };
  for (const auto& [arguments, message] : cases) {
    const Outcome outcome = prismal(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.output, message);
  }
  EXPECT_EQ(prismal("--version").status, 0);
  EXPECT_EQ(prismal("").status, 2);
}

TEST_F(CommandLine, CompletionsAndManualHaveEveryOption) {
  const std::string bash = prismal("completion bash").output;
  const std::string zsh = prismal("completion zsh").output;
  const std::string fish = prismal("completion fish").output;
  const std::string manual = prismal("manual").output;
  for (const std::string& command : commands()) {
    const auto start = manual.find("## prismal " + command + "\n");
    ASSERT_NE(start, std::string::npos) << command;
    const std::string section = manual.substr(start, manual.find("\n## ", start) - start);
    const std::string bashOptions = "\n    " + command + "\\) options='[^']*";
    const std::string fishOptions = "_from " + command + "'[^\n]* -l ";
    for (const std::string& option : optionsOf(command)) {
      const auto inBash = std::regex(bashOptions + option + "[ ']");
      EXPECT_TRUE(std::regex_search(bash, inBash)) << command << " " << option;
      EXPECT_NE(zsh.find("*" + option + "["), std::string::npos) << option;
      const auto inFish = std::regex(fishOptions + option.substr(2) + " ");
      EXPECT_TRUE(std::regex_search(fish, inFish)) << command << " " << option;
      EXPECT_NE(section.find("**" + option + "**"), std::string::npos) << command << " " << option;
    }
  }
  EXPECT_EQ(manual.find("## prismal completion"), std::string::npos);
  EXPECT_EQ(prismal("completion tcsh").status, 2);
}

TEST_F(CommandLine, BashCompletes) {
  write("completion", prismal("completion bash").output);
  EXPECT_EQ(shell("bash", "bash -n ./completion"), "");
  write("a theme.plist", "");
  fs::create_directory(folder() / "a folder");
  struct Case {
    std::string words;
    std::string proposals;
  };
  const Case cases[] = {
      {"prismal ren", "render "},
      {"prismal --ver", "--version "},
      {"prismal render --devi", "--device-root --device "},
      {"prismal render --device tab", "tablet tablet-split "},
      {"prismal render x --orientation ''", "portrait landscape "},
      {"prismal render -o 'a '", "a folder a theme.plist "},
      {"prismal render --all 'a '", "a folder "},
      {"prismal render --press 'a'", " "},
      {"prismal render 'a t'", "a theme.plist "},
      {"prismal names ''", " "},
      {"prismal convert --to j", "json "},
      {"prismal nonsense ''", " "},
  };
  for (const auto& [words, expected] : cases) EXPECT_EQ(proposals(words), expected) << words;
}

TEST_F(CommandLine, OtherShellsReadTheirs) {
  int read = 0;
  for (const std::string name : {"zsh", "fish"}) {
    if (!isInstalled(name)) continue;
    EXPECT_EQ(shell(name + " -n", prismal("completion " + name).output), "");
    ++read;
  }
  if (read == 0) GTEST_SKIP() << "neither is installed";
}

}  // namespace
