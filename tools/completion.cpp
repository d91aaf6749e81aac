#include "completion.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "check/rules.h"
#include "choice_option.h"
#include "command_line/completion.h"
#include "command_line/manual.h"
#include "exit_status.h"
#include "output_file.h"
#include "theme/format_table.h"

namespace tools {

namespace {

int print(const std::string& text) {
  const auto printed = printResult(text);
  if (printed) return kDone;
  std::fprintf(stderr, "prismal: standard output: %s\n", printed.reason().c_str());
  return kTrouble;
}

/// The names of the installed themes, out of the table that tells of them.
constexpr const char* kListThemes = "prismal list 2>/dev/null | sed -n 's/  [ 0-9]*$//p'";

std::vector<std::string> ruleNames() {
  std::vector<std::string> names;
  for (const check::Rule& rule : check::kRules) names.emplace_back(rule.name);
  return names;
}

std::vector<std::string> visualStyles(std::vector<std::string> others) {
  for (const auto& style : theme::kVisualStyles) others.emplace_back(style.name);
  return others;
}

/// What the definitions of options leave open.
std::vector<command_line::Vocabulary> vocabulary() {
  return {
      {"check", "RULE,...", ruleNames()},
      {"explain", "standard|alert|NAME", visualStyles({"standard", "alert"})},
      {"settings background", "STYLE", visualStyles({std::string(theme::kDictationStyle)})},
      {"uninstall", "NAME", {}, kListThemes},
  };
}

}  // namespace

void addCompletionCommands(CLI::App& app, int& status) {
  CLI::App* const completion =
      app.add_subcommand("completion", "What makes a shell complete this command line")->group("");
  auto shell = std::make_shared<command_line::Shell>();
  addChoice(*completion, "SHELL", *shell, "The shell", command_line::kShells)->required();
  completion->footer("Example: source <(prismal completion bash)");
  completion->callback([shell, &app, &status] {
    status = print(command_line::completionFor(*shell, app, vocabulary()));
  });

  CLI::App* const manual =
      app.add_subcommand("manual", "All commands and their options as Markdown")->group("");
  manual->footer("Example: prismal manual > commands.md");
  manual->callback([&app, &status] { status = print(command_line::manualOf(app)); });
}

}  // namespace tools
