#include "explain.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "exit_status.h"
#include "explain/explanation.h"
#include "explain/explanation_json.h"
#include "explain/explanation_text.h"
#include "explain/linked_library.h"
#include "explain/rule_hits.h"
#include "explain/rule_picture.h"
#include "explain/rule_report.h"
#include "explain/theme_rules.h"
#include "host/images/encode.h"
#include "keyboard/dress_options.h"
#include "keyboard/keyboard_process.h"
#include "keyboard/view.h"
#include "keyboard/words.h"
#include "library_path.h"
#include "output_file.h"
#include "platform/foundation.h"
#include "watch/theme_files.h"

namespace tools {

namespace fs = std::filesystem;
using explain::ThemeRules;
using keyboard::Json;

namespace {

constexpr double kScale = 2;

using keyboard::kVisualStyles;

/// More rules than any list can hold.
constexpr int kRuleLimit = 1'000'000;

struct ExplainOptions {
  keyboard::Dress dress;
  keyboard::ViewOptions view;
  std::string key;
  std::optional<std::size_t> rule;
  bool namesVariant = false;  ///< an option says which keys the keyboard has
  std::string style;
  fs::path picture;
  bool json = false;
};

/// Says in one line why there is no answer.
int refuse(const std::string& reason) {
  std::fprintf(stderr, "prismal explain: %s\n", reason.c_str());
  return kTrouble;
}

int print(const std::string& text) {
  const auto printed = printResult(text);
  return printed ? kDone : refuse("standard output: " + printed.reason());
}

std::string inLines(const Json& json) {
  return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

bool isVisualStyle(std::string_view style) {
  return std::ranges::find(kVisualStyles, style) != std::end(kVisualStyles);
}

void tellNamesakes(const explain::Explanation& explanation, const ExplainOptions& options) {
  if (options.dress.quiet) return;
  for (const auto name : explanation.namesakes) {
    std::fprintf(stderr, "%s is also the label of %.*s\n", options.key.c_str(),
                 static_cast<int>(name.size()), name.data());
  }
}

int explainKey(const ExplainOptions& options, const ThemeRules& rules) {
  const platform::NSAutoreleasePool pool;
  keyboard::ViewOptions choice = options.view;
  for (const auto& style : keyboard::kStyles) {
    if (style.word == options.style) choice.style = style.value;
  }
  const auto explanation =
      explain::explainKey(keyboard::viewOf(choice), kScale, options.key, rules);
  if (!explanation) return refuse(explanation.reason());
  tellNamesakes(*explanation, options);
  const int printed = print(options.json ? inLines(explain::explanationJson(*explanation))
                                         : explain::explanationText(*explanation, rules));
  if (printed != kDone) return printed;
  return explain::isThemed(*explanation) ? kDone : kFindings;
}

int drawHits(const ExplainOptions& options, const explain::RuleReport& report) {
  if (options.picture.empty() || report.hits.empty()) return kDone;
  const auto picture = explain::drawHits(report.hits, options.dress.quiet);
  if (!picture) return refuse(picture.reason());
  const auto written = writeOutput(options.picture, host::images::encodePng(*picture));
  return written ? kDone : refuse(options.picture.string() + ": " + written.reason());
}

int explainRule(const ExplainOptions& options, const ThemeRules& rules) {
  explain::RuleReport report{.number = *options.rule,
                             .style = options.style,
                             .list = rules.listFor(options.style),
                             .hits = {}};
  const std::size_t count = report.list.rules.items().size();
  if (report.number >= count) {
    return refuse("--rule " + std::to_string(report.number) + ": " + rules.file() + " has " +
                  std::to_string(count) + " rules for " + options.style + ", counted from 0");
  }
  const auto hits =
      explain::hitsOf(report.rule(), report.list.name, rules, explain::searchedViews(options.view));
  report.hits = hits;
  const int printed =
      print(options.json ? inLines(explain::ruleJson(report)) : explain::ruleText(report, rules));
  if (printed != kDone) return printed;
  const int drawn = drawHits(options, report);
  if (drawn != kDone) return drawn;
  return hits.empty() ? kFindings : kDone;
}

std::optional<std::string> contradictionOfKey(const ExplainOptions& options) {
  if (options.view.dictation) return "the dictation panel has no keys";
  if (!options.picture.empty()) return "-o draws the keys that a --rule hits, not a --key";
  if (isVisualStyle(options.style)) {
    return "--style " + options.style + " goes with --rule; with --key it is standard or alert";
  }
  return std::nullopt;
}

std::optional<std::string> contradictionOfRule(const ExplainOptions& options) {
  if (!isVisualStyle(options.style)) {
    return "--rule needs the --style whose rules are counted, such as iPhone-Standard";
  }
  if (keyboard::namesStates(options.view)) {
    return "--rule tells of all states; --press, --disable, --shift and --dictation go with --key";
  }
  if (options.namesVariant) {
    return "--rule tells of the keys that only some devices have, too; --dictation-key and "
           "--international-key go with --key";
  }
  if (isTerminal(options.picture)) {
    return "-o -: a picture is not for a terminal; send it to a file or a program";
  }
  if (options.picture == "-") return "-o -: the keys are told on standard output";
  if (options.picture.empty() || options.dress.theme.empty()) return std::nullopt;
  return refusalToReplace(options.picture, watch::filesOfTheme(options.dress));
}

std::optional<std::string> contradiction(const ExplainOptions& options) {
  if (options.key.empty() == !options.rule) return "a --key or a --rule, one of them";
  return options.rule ? contradictionOfRule(options) : contradictionOfKey(options);
}

int run(const ExplainOptions& options) {
  if (const auto reason = contradiction(options)) return refuse(*reason);
  const auto process = keyboard::KeyboardProcess::start(options.dress, kScale);
  if (!process) return refuse(process.reason());
  const auto rules = ThemeRules::read(options.dress);
  if (!rules) return refuse(rules.reason());
  return options.rule ? explainRule(options, *rules) : explainKey(options, *rules);
}

void addStyleOption(CLI::App& command, ExplainOptions& options) {
  std::vector<std::string> words;
  for (const auto& style : keyboard::kStyles) words.emplace_back(style.word);
  words.insert(words.end(), std::begin(kVisualStyles), std::end(kVisualStyles));
  command
      .add_option("--style", options.style,
                  "With --key, the light keyboard or the dark one over alerts [standard]; with "
                  "--rule, the visual style whose rules are counted")
      ->check(CLI::IsMember(words).description(""))
      ->type_name("standard|alert|NAME");
}

void addQuestionOptions(CLI::App& command, ExplainOptions& options) {
  command.add_option("--key", options.key, "The key to explain, by its name or its label")
      ->type_name("KEY");
  command
      .add_option("--rule", options.rule,
                  "In place of a key: which keys the rule of that number hits, counted from 0")
      ->check(CLI::Range(kRuleLimit - 1).description(""))
      ->type_name("N");
  command
      .add_option("-o,--output", options.picture,
                  "With --rule, a picture of the keyplanes that have such keys, these outlined")
      ->type_name("FILE");
  command.add_flag("--json", options.json, "The answer as JSON");
}

}  // namespace

void addExplainCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<ExplainOptions>();
  options->dress.library = libraryPath();
  CLI::App* const command = app.add_subcommand("explain", "Why a key looks as it does");
  keyboard::addDressOptions(*command, options->dress);
  addQuestionOptions(*command, *options);
  addStyleOption(*command, *options);
  keyboard::addKeyplaneOptionsButStyle(*command, options->view);
  keyboard::addStateOptions(*command, options->view);
  command->footer(
      "Of a key: what conditions can test of it, its properties and where each comes from, what\n"
      "became of every rule, and which pictures were tried behind the keys. With --rule, "
      "--device,\n"
      "--orientation and --keyplane narrow what is searched; every state counts, and the keys "
      "that\n"
      "only some devices have.\n"
      "Exit status: 0 the theme shows on the key or behind it, or the rule hits a key; 1 it "
      "doesn't;\n"
      "2 wrong usage, or something that can't be read, loaded or written.\n\n"
      "Examples:\n"
      "  prismal explain Evening.theme --key return\n"
      "  prismal explain Evening.theme --key Shift-Key --shift locked --device tablet\n"
      "  prismal explain Evening.theme --rule 3 --style iPhone-Standard -o hits.png");
  command->callback([options, command, &status] {
    for (const char* name : {"--dictation-key", "--international-key"}) {
      options->namesVariant = options->namesVariant || command->count(name) > 0;
    }
    status = run(*options);
  });
}

}  // namespace tools
