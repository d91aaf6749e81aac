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
    const auto start = help.find("Subcommands:");
    auto names = found(help.substr(start, help.find("\nExamples:") - start), "\n  ([a-z]+) ");
    EXPECT_GE(names.size(), 5U) << help;
    return names;
  }

  std::set<std::string> optionsOf(const std::string& command) const {
    return found(prismal(command + " --help").output, "\n  (?:-[a-zA-Z],)?(--[a-z-]+)");
  }

  /// What bash proposes for the last word of `words`.
  std::string proposals(const std::string& words) const {
    const std::string place = fs::path(PRISMAL).parent_path().string();
    return shell("bash", "PATH='" + place + "':\"$PATH\" XDG_DATA_HOME=\"$PWD\"\n" +
                             "export XDG_DATA_HOME\nsource ./completion\nCOMP_WORDS=(" + words +
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

TEST_F(CommandLine, ExamplesOfHelpWorkAsTheyStand) {
  ASSERT_EQ(prismal("new Evening").status, 0);
  ASSERT_EQ(prismal("new Accents").status, 0);
  for (const std::string command :
       {"render", "check", "explain", "install", "list", "uninstall", "keys", "names", "format"}) {
    const std::string help = prismal(command + " --help").output;
    const auto examples = found(help, "(?:\n  |Example: )(prismal " + command + "[^\n]*)");
    EXPECT_FALSE(examples.empty()) << command;
    for (const std::string& example : examples) {
      const Outcome outcome = script("{ " + example + "; } 2>&1");
      EXPECT_LT(outcome.status, 2) << example << "\n" << outcome.output;
    }
  }
}

TEST_F(CommandLine, SlipsAreToldFromOtherWords) {
  struct Case {
    std::string arguments;
    std::string message;
  };
  const Case cases[] = {
      {"rendr x", "prismal: no command rendr; did you mean render?\n"},
      {"paint", "prismal: no command paint; `prismal --help` lists them all\n"},
      {"'\x1B[2J'", "prismal: no command \\u001b[2J; `prismal --help` lists them all\n"},
      {"manua", "prismal: no command manua; `prismal --help` lists them all\n"},
      {"help rendr", "prismal: no command rendr; did you mean render?\n"},
      {"--verson", "prismal: no option --verson; did you mean --version?\n"},
      {"watch X", "prismal watch: --output is required; `prismal watch --help` says more\n"},
      {"render X --pres g", "prismal render: no option --pres; did you mean --press?\n"},
      {"render X --pres=g", "prismal render: no option --pres; did you mean --press?\n"},
      {"render X -x", "prismal render: no option -x; `prismal render --help` lists them all\n"},
      {"render X Y Z",
       "prismal render: Y: one argument too many; `prismal render --help` says more\n"},
      {"settings usePrisma on",
       "prismal settings: no command usePrisma; did you mean usePrismal?\n"},
      {"settings usePrismal",
       "prismal settings usePrismal: VALUE is required; `prismal settings "
       "usePrismal --help` says more\n"},
      {"render --system --press retrun",
       "prismal render: --press retrun: no such key; did you mean return? This keyplane has q w e "
       "r t y u i o p a s d f g h j k l Shift-Key z x c v b n m Delete-Key 123 International-Key "
       "space return\n"},
      {"render --system --press SHIFTKEY",
       "prismal render: --press SHIFTKEY: no such key; did you mean Shift-Key? This keyplane has q "
       "w e r t y u i o p a s d f g h j k l Shift-Key z x c v b n m Delete-Key 123 "
       "International-Key space return\n"},
      {"convert .", "prismal convert: .: a folder; its theme.plist is what can be converted\n"},
  };
  for (const auto& [arguments, message] : cases) {
    const Outcome outcome = prismal(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.output, message);
  }
  EXPECT_EQ(prismal("help").output, prismal("--help").output);
  EXPECT_EQ(prismal("help settings usePrismal").output,
            prismal("settings usePrismal --help").output);
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
    const std::string bashOptions = "\n    '" + command + "'\\) options='[^']*";
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

TEST_F(CommandLine, TheManualShowsHowToCallEach) {
  const std::string manual = prismal("manual").output;
  for (const std::string line :
       {"    prismal check [OPTION...] [THEME...]\n", "    prismal install [OPTION...] THEME...\n",
        "    prismal render [OPTION...] [THEME]\n", "    prismal uninstall [OPTION...] [NAME...]\n",
        "    prismal settings usePrismal [OPTION...] on|off\n",
        "    prismal settings background [OPTION...] STYLE Portrait|Landscape [PICTURE]\n",
        "\n### prismal settings background\n", "\nExample:\n\n    prismal notify settings\n",
        "\nExamples:\n\n    prismal settings usePrismal off\n"}) {
    EXPECT_NE(manual.find(line), std::string::npos) << line;
  }
}

TEST_F(CommandLine, BashCompletes) {
  write("completion", prismal("completion bash").output);
  EXPECT_EQ(shell("bash", "bash -n ./completion"), "");
  write("a theme.plist", "");
  fs::create_directory(folder() / "a folder");
  // What is listed is text and nothing else.
  for (const std::string name : {"My Linen", "$(touch harm)"}) {
    write(name + ".theme/theme.plist", "<dict/>");
    ASSERT_EQ(prismal("install '" + name + ".theme'").status, 0);
  }
  struct Case {
    std::string words;
    std::string proposals;
  };
  const Case cases[] = {
      {"prismal ren", "render "},
      {"prismal --ver", "--version "},
      {"prismal render --devi", "--device-root --device "},
      {"prismal render --device tab", "tablet tablet-split "},
      {"prismal render --device = tab", "tablet tablet-split "},
      {"prismal render --dictation-key =", "yes no "},
      {"prismal render x --orientation ''", "portrait landscape "},
      {"prismal render -o 'a '", "a folder a theme.plist "},
      {"prismal render --all 'a '", "a folder "},
      {"prismal render --press 'a'", " "},
      {"prismal render 'a t'", "a theme.plist "},
      {"prismal names ''", " "},
      {"prismal convert --to j", "json "},
      {"prismal nonsense ''", " "},
      {"prismal render render ''", " "},
      {"prismal settings ''", "usePrismal background "},
      {"prismal settings --device-root background ''", "usePrismal background "},
      {"prismal settings usePrismal o", "on off "},
      {"prismal settings background iPhone-A", "iPhone-Alert "},
      {"prismal settings background iPad-Split ''", "Portrait Landscape "},
      {"prismal settings background iPad-Split Portrait 'a t'", "a theme.plist "},
      {"prismal settings background --rem", "--remove "},
      {"prismal check x --select no-", "no-section "},
      {"prismal check --ignore image-mis", "image-missing "},
      {"prismal explain --rule 1 --style iPad-Sp", "iPad-Split "},
      {"prismal explain --key ''", " "},
      {"prismal uninstall ''", "$(touch harm) My Linen "},
      {"prismal uninstall x My", "My Linen "},
  };
  for (const auto& [words, expected] : cases) EXPECT_EQ(proposals(words), expected) << words;
  EXPECT_FALSE(fs::exists(folder() / "harm"));
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
