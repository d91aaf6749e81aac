#include "completion.h"

#include <cstdio>
#include <memory>
#include <string>

#include "choice_option.h"
#include "command_line/completion.h"
#include "command_line/manual.h"
#include "exit_status.h"
#include "output_file.h"

namespace tools {

namespace {

int print(const std::string& text) {
  const auto printed = printResult(text);
  if (printed) return kDone;
  std::fprintf(stderr, "prismal: standard output: %s\n", printed.reason().c_str());
  return kTrouble;
}

}  // namespace

void addCompletionCommands(CLI::App& app, int& status) {
  CLI::App* const completion =
      app.add_subcommand("completion", "What makes a shell complete this command line")->group("");
  auto shell = std::make_shared<command_line::Shell>();
  addChoice(*completion, "SHELL", *shell, "The shell", command_line::kShells)->required();
  completion->footer("Example: source <(prismal completion bash)");
  completion->callback(
      [shell, &app, &status] { status = print(command_line::completionFor(*shell, app)); });

  CLI::App* const manual =
      app.add_subcommand("manual", "All commands and their options as Markdown")->group("");
  manual->footer("Example: prismal manual > commands.md");
  manual->callback([&app, &status] { status = print(command_line::manualOf(app)); });
}

}  // namespace tools
