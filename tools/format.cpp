#include "format.h"

#include <CLI/App.hpp>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "exit_status.h"
#include "format/schema.h"
#include "output_file.h"
#include "text_table.h"
#include "theme/format_table.h"

namespace tools {

namespace {

struct FormatOptions {
  bool schema = false;
};

using Rows = std::vector<std::vector<std::string>>;

/// One table of the format: how a row of it reads.
template <class Table, class RowOf>
std::string section(Rows rows, const Table& table, RowOf rowOf) {
  for (const auto& entry : table) rows.push_back(rowOf(entry));
  return textTable(rows);
}

std::string keys(const std::string& heading, std::span<const theme::FormatKey> table) {
  return section({{heading, "TYPE", "WHAT IT IS"}}, table, [](const theme::FormatKey& key) {
    return std::vector{std::string(key.name), std::string(theme::typeName(key.type)),
                       std::string(key.description)};
  });
}

/// A table whose rows have an example.
template <class Table>
std::string examples(Rows rows, const Table& table) {
  return section(std::move(rows), table, [](const auto& row) {
    return std::vector{std::string(row.name), std::string(row.example),
                       std::string(row.description)};
  });
}

std::string tables() {
  const auto styles = section({{"VISUAL STYLE", "RULES", "WHAT IT IS"}}, theme::kVisualStyles,
                              [](const theme::VisualStyle& style) {
                                return std::vector{std::string(style.name),
                                                   std::string(style.hasRules ? "yes" : "no"),
                                                   std::string(style.description)};
                              });
  const Rows conditions = {
      {"CONDITION", "EXAMPLE", "HOLDS WHEN"},
      {std::string(theme::kEveryKey), std::string(theme::kEveryKey), "always"}};
  return keys("SECTION", theme::kSections) + "\n" + styles + "\n" +
         examples(conditions, theme::kConditionTerms) + "\n" +
         keys("PROPERTY", theme::kStyleProperties) + "\n" +
         examples({{"BACKGROUND KEY", "EXAMPLE", "ANSWERS FOR"}}, theme::kBackgroundKeyForms) +
         "\n" + keys("SETTING", theme::kSettings);
}

int run(const FormatOptions& options) {
  const auto printed =
      printResult(options.schema ? format::themeSchema().dump(2) + "\n" : tables());
  if (printed) return kDone;
  std::fprintf(stderr, "prismal format: standard output: %s\n", printed.reason().c_str());
  return kTrouble;
}

}  // namespace

void addFormatCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<FormatOptions>();
  CLI::App* const command = app.add_subcommand(
      "format", "What a theme may hold: sections, visual styles, conditions, properties");
  command->add_flag(
      "--schema", options->schema,
      "A JSON Schema of the JSON form of a theme, for editors that complete and check");
  command->footer(
      "Names are exact, letter case included. `man 5 prismal-theme`, made of\n"
      "docs/theme-format.md, says the rest.\n\n"
      "Examples:\n"
      "  prismal format | grep Etch\n"
      "  prismal format --schema > theme.schema.json");
  command->callback([options, &status] { status = run(*options); });
}

}  // namespace tools
