#include "check.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <vector>

#include "check/did_you_mean.h"
#include "check/output.h"
#include "check/report.h"
#include "check/words.h"
#include "choice_option.h"
#include "exit_status.h"
#include "keyboard/keyboard_child.h"
#include "library_path.h"
#include "output_file.h"
#include "sandbox/sandbox.h"
#include "text_table.h"

namespace tools {

using check::Format;
using check::Report;
using check::Rule;
using check::Severity;
using keyboard::KeyboardChild;

namespace {

enum class FailOn : std::uint8_t { warning, error, never };
enum class ColorUse : std::uint8_t { when_terminal, always, never };

template <class Value>
struct Choice {
  std::string_view word;
  Value value;
};

constexpr Choice<Format> kFormats[] = {{"full", Format::full},
                                       {"concise", Format::concise},
                                       {"json", Format::json},
                                       {"sarif", Format::sarif},
                                       {"github", Format::github}};
constexpr Choice<FailOn> kFailOn[] = {
    {"error", FailOn::error}, {"warning", FailOn::warning}, {"never", FailOn::never}};
constexpr Choice<ColorUse> kColorUses[] = {
    {"auto", ColorUse::when_terminal}, {"always", ColorUse::always}, {"never", ColorUse::never}};

struct CheckOptions {
  std::vector<std::string> themes;
  std::optional<Format> format;
  std::vector<std::string> selected;
  std::vector<std::string> ignored;
  FailOn failOn = FailOn::warning;
  ColorUse color = ColorUse::when_terminal;
  bool quiet = false;
  bool list = false;
  bool sandbox = true;
  keyboard::Dress dress;  ///< its theme is that which is being checked
};

int refuse(const std::string& reason) {
  std::fprintf(stderr, "prismal check: %s\n", reason.c_str());
  return kTrouble;
}

/// The findings of one theme, from a process of its own: it has one keyboard, and what a theme does
/// to it is over with it.
Report collect(const std::string& theme, host::files::Result<KeyboardChild>& process) {
  if (!process) return {theme, {}, process.reason()};
  const auto bytes = process->bytes();
  if (bytes) return check::unpacked(*bytes);
  return {theme, {}, bytes.reason()};
}

/// As many at once as there are processors.
std::vector<Report> checkAll(CheckOptions& options) {
  const auto check = [](const keyboard::Dress& dress) -> host::files::Result<std::string> {
    return check::packed(check::checkTheme(dress));
  };
  const std::size_t most = std::max(1U, std::thread::hardware_concurrency());
  std::deque<host::files::Result<KeyboardChild>> running;
  std::vector<Report> reports;
  for (std::size_t next = 0; reports.size() < options.themes.size();) {
    for (; next < options.themes.size() && running.size() < most; ++next) {
      options.dress.theme = options.themes[next];
      running.push_back(KeyboardChild::start(options.dress, check));
    }
    reports.push_back(collect(options.themes[reports.size()], running.front()));
    running.pop_front();
  }
  return reports;
}

bool names(const std::vector<std::string>& rules, const Rule& rule) {
  return std::ranges::find(rules, rule.name) != rules.end();
}

/// Leaves what was asked for. That a theme can't be read is told in any case.
void filter(Report& report, const CheckOptions& options) {
  if (report.isUnreadable()) return;
  std::erase_if(report.findings, [&](const check::Finding& finding) {
    const bool isSelected = options.selected.empty() || names(options.selected, *finding.rule);
    return !isSelected || names(options.ignored, *finding.rule);
  });
}

std::optional<std::string> unknownRule(const std::vector<std::string>& rules) {
  std::vector<std::string_view> known;
  for (const Rule& rule : check::kRules) known.push_back(rule.name);
  for (const std::string& name : rules) {
    if (!check::findRule(name)) {
      return "no rule is called " + check::inQuotes(name) + check::didYouMean(name, known);
    }
  }
  return std::nullopt;
}

bool usesColor(ColorUse use) {
  if (use != ColorUse::when_terminal) return use == ColorUse::always;
  const char* const forbidden = std::getenv("NO_COLOR");
  const char* const terminal = std::getenv("TERM");
  return isatty(STDOUT_FILENO) != 0 && !(forbidden && *forbidden) &&
         !(terminal && std::string_view(terminal) == "dumb");
}

std::string outputOf(const std::vector<Report>& reports, const CheckOptions& options) {
  const bool isTerminal = isatty(STDOUT_FILENO) != 0;
  switch (options.format.value_or(isTerminal ? Format::full : Format::concise)) {
    case Format::json:
      return check::jsonOf(reports);
    case Format::sarif:
      return check::sarifOf(reports);
    case Format::github:
      return check::githubOf(reports);
    case Format::full:
      return check::textOf(reports, true, usesColor(options.color));
    case Format::concise:
      break;
  }
  return check::textOf(reports, false, usesColor(options.color));
}

/// "2 errors, 1 warning".
std::string summaryOf(const std::vector<Report>& reports) {
  const std::size_t errors = check::countOf(reports, Severity::error);
  const std::size_t warnings = check::countOf(reports, Severity::warning);
  std::string text;
  if (errors > 0) text = check::counted(errors, "error");
  if (warnings > 0) text += (text.empty() ? "" : ", ") + check::counted(warnings, "warning");
  return text.empty() ? "no findings" : text;
}

int statusOf(const std::vector<Report>& reports, FailOn failOn) {
  const auto isTrouble = [](const Report& report) {
    return !report.trouble.empty() || report.isUnreadable();
  };
  if (std::ranges::any_of(reports, isTrouble)) return kTrouble;
  if (failOn == FailOn::never) return kDone;
  const bool fails = check::countOf(reports, Severity::error) > 0 ||
                     (failOn == FailOn::warning && check::countOf(reports, Severity::warning) > 0);
  return fails ? kFindings : kDone;
}

int listRules() {
  std::vector<std::vector<std::string>> rows = {{"RULE", "SEVERITY", "A FINDING SAYS THAT"}};
  for (const Rule& rule : check::kRules) {
    rows.push_back({std::string(rule.name), std::string(check::wordOf(rule.severity)),
                    std::string(rule.summary)});
  }
  const auto printed = printResult(textTable(rows));
  return printed ? kDone : refuse("standard output: " + printed.reason());
}

int run(CheckOptions& options) {
  if (options.list) return listRules();
  if (options.themes.empty()) return refuse("no THEME; `prismal check --help` says more");
  for (const auto* rules : {&options.selected, &options.ignored}) {
    if (const auto reason = unknownRule(*rules)) return refuse(*reason);
  }
  options.dress.sandboxed = sandbox::isToBeUsed(options.sandbox, "check");
  std::vector<Report> reports = checkAll(options);
  for (Report& report : reports) {
    filter(report, options);
    if (!report.trouble.empty()) refuse(report.file + ": " + report.trouble);
  }
  const int status = statusOf(reports, options.failOn);
  if (options.quiet) return status;
  if (const auto printed = printResult(outputOf(reports, options)); !printed) {
    return refuse("standard output: " + printed.reason());
  }
  const bool isChecked =
      std::ranges::any_of(reports, [](const Report& report) { return report.trouble.empty(); });
  if (isChecked) std::fprintf(stderr, "%s\n", summaryOf(reports).c_str());
  return status;
}

void addOptions(CLI::App& command, CheckOptions& options) {
  command.add_option(
      "THEME", options.themes,
      "A theme folder, or a property-list file; several are checked each for itself");
  addChoice(command, "--format", options.format,
            "How findings are written [full on a terminal, else concise]", kFormats);
  command.add_option("--select", options.selected, "Tell of these rules alone")
      ->delimiter(',')
      ->type_name("RULE,...")
      ->allow_extra_args(false);
  command.add_option("--ignore", options.ignored, "Don't tell of these rules")
      ->delimiter(',')
      ->type_name("RULE,...")
      ->allow_extra_args(false);
  addChoice(command, "--fail-on", options.failOn,
            "The least severity that makes the exit status 1 [warning]", kFailOn);
  addChoice(command, "--color", options.color, "Whether text is coloured [auto]", kColorUses);
  command.add_flag("--quiet", options.quiet,
                   "Print neither findings nor summary: the exit status tells");
  command.add_flag("--list", options.list, "List all rules and do no more");
  command
      .add_option("--library", options.dress.library,
                  "The library to load, in place of the one that came with this program")
      ->type_name("FILE");
  sandbox::addSandboxOption(command, options.sandbox);
}

}  // namespace

void addCheckCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<CheckOptions>();
  options->dress.library = libraryPath();
  CLI::App* const command = app.add_subcommand("check", "Tell all that is wrong with a theme");
  addOptions(*command, *options);
  command->footer(
      "Findings go to standard output, a summary to standard error. docs/checks.md, installed\n"
      "below share/doc/prismal, explains every rule. With --color auto, NO_COLOR in the\n"
      "environment keeps colours away.\n"
      "Exit status: 0 nothing found, 1 findings, 2 wrong usage, or a theme that can't be read.\n\n"
      "Examples:\n"
      "  prismal check Evening.theme\n"
      "  prismal check --ignore low-contrast,missing-sibling Evening.theme\n"
      "  prismal check --format json --fail-on error *.theme");
  command->callback([options, &status] { status = run(*options); });
}

}  // namespace tools
