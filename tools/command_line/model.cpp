#include "command_line/model.h"

namespace tools::command_line {

namespace {

/// Placeholders that stand for something else than a file.
constexpr struct {
  std::string_view placeholder;
  Value value;
} kPlaceholders[] = {{"DIR", Value::kDirectory}, {"KEY", Value::kOther},  {"NAME", Value::kOther},
                     {"INT", Value::kOther},     {"UINT", Value::kOther}, {"FLOAT", Value::kOther}};

Value valueOf(std::string_view placeholder) {
  if (placeholder.find('|') != placeholder.npos) return Value::kWords;
  for (const auto& known : kPlaceholders) {
    if (known.placeholder == placeholder) return known.value;
  }
  return Value::kFile;
}

Option optionOf(const CLI::Option& definition) {
  Option option;
  for (const std::string& name : definition.get_snames()) option.names.push_back("-" + name);
  for (const std::string& name : definition.get_lnames()) option.names.push_back("--" + name);
  option.description = definition.get_description();
  option.required = definition.get_required();
  if (definition.get_items_expected_max() == 0) return option;
  const bool isPositional = option.names.empty();
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

}  // namespace

std::vector<Option> optionsOf(const CLI::App& app) {
  return all(app, false);
}

std::vector<Command> commandsOf(const CLI::App& app) {
  std::vector<Command> commands;
  const auto isListed = [](const CLI::App* command) { return !command->get_group().empty(); };
  for (const CLI::App* const command : app.get_subcommands(isListed)) {
    commands.push_back({command->get_name(), command->get_description(), optionsOf(*command),
                        all(*command, true), command->get_footer()});
  }
  return commands;
}

}  // namespace tools::command_line
