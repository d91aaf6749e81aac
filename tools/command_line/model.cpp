#include "command_line/model.h"

#include <CLI/App.hpp>

namespace tools::command_line {

namespace {

/// Placeholders that stand for something else than a file.
constexpr struct {
  std::string_view placeholder;
  Value value;
} kPlaceholders[] = {{"DIR", Value::kDirectory}, {"KEY", Value::kOther},  {"NAME", Value::kOther},
                     {"INT", Value::kOther},     {"UINT", Value::kOther}, {"FLOAT", Value::kOther},
                     {"N", Value::kOther}};

Value valueOf(std::string_view placeholder) {
  if (placeholder.find('|') != placeholder.npos) return Value::kWords;
  for (const auto& known : kPlaceholders) {
    if (known.placeholder == placeholder) return known.value;
  }
  return Value::kFile;
}

/// Looks `option` of `command` up.
void spellOut(Option& option, std::string_view command, std::span<const Vocabulary> vocabulary) {
  for (const Vocabulary& entry : vocabulary) {
    if (entry.command != command || entry.placeholder != option.placeholder) continue;
    option.value = entry.lister.empty() ? Value::kWords : Value::kListed;
    option.words = entry.words;
    option.lister = entry.lister;
  }
}

Option optionOf(const CLI::Option& definition) {
  Option option;
  for (const std::string& name : definition.get_snames()) option.names.push_back("-" + name);
  for (const std::string& name : definition.get_lnames()) option.names.push_back("--" + name);
  option.description = definition.get_description();
  option.required = definition.get_required();
  if (definition.get_items_expected_max() == 0) return option;
  const bool isPositional = option.names.empty();
  option.repeats = isPositional && definition.get_items_expected_max() > 1;
  // A positional goes by its name unless it says what it takes.
  const std::string type = definition.get_type_name();
  const bool named = isPositional && (type.empty() || type == "TEXT");
  option.placeholder = named ? definition.get_name(true) : type;
  option.value = valueOf(option.placeholder);
  if (option.value == Value::kWords) option.words = CLI::detail::split(option.placeholder, '|');
  return option;
}

std::vector<Option> all(const CLI::App& app, bool positional) {
  std::vector<Option> options;
  for (const CLI::Option* const definition : app.get_options()) {
    if (definition->get_group().empty()) continue;
    if (definition->nonpositional() != positional) options.push_back(optionOf(*definition));
  }
  return options;
}

Command commandOf(const CLI::App& app, const std::string& around,
                  std::span<const Vocabulary> vocabulary);

// NOLINTNEXTLINE(misc-no-recursion): as deep as commands are nested
std::vector<Command> commandsIn(const CLI::App& app, const std::string& around,
                                std::span<const Vocabulary> vocabulary) {
  std::vector<Command> commands;
  const auto isListed = [](const CLI::App* command) { return !command->get_group().empty(); };
  for (const CLI::App* const command : app.get_subcommands(isListed)) {
    commands.push_back(commandOf(*command, around, vocabulary));
  }
  return commands;
}

// NOLINTNEXTLINE(misc-no-recursion): likewise
Command commandOf(const CLI::App& app, const std::string& around,
                  std::span<const Vocabulary> vocabulary) {
  const std::string name = around + app.get_name();
  Command command{name,
                  app.get_description(),
                  all(app, false),
                  all(app, true),
                  commandsIn(app, name + " ", vocabulary),
                  app.get_footer()};
  for (Option& option : command.options) spellOut(option, name, vocabulary);
  for (Option& positional : command.positionals) spellOut(positional, name, vocabulary);
  return command;
}

}  // namespace

std::vector<Option> optionsOf(const CLI::App& app) {
  return all(app, false);
}

std::vector<Command> commandsOf(const CLI::App& app, std::span<const Vocabulary> vocabulary) {
  return commandsIn(app, "", vocabulary);
}

// NOLINTNEXTLINE(misc-no-recursion): likewise
std::vector<const Command*> withNested(const std::vector<Command>& commands) {
  std::vector<const Command*> all;
  for (const Command& command : commands) {
    all.push_back(&command);
    for (const Command* const nested : withNested(command.commands)) all.push_back(nested);
  }
  return all;
}

}  // namespace tools::command_line
