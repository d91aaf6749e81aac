#include "command_line/completion.h"

#include <vector>

#include "command_line/model.h"

namespace tools::command_line {

namespace {

std::string joined(const std::vector<std::string>& words, std::string_view between = " ") {
  std::string text;
  for (const std::string& word : words) {
    if (!text.empty()) text += between;
    text += word;
  }
  return text;
}

/// `text` with `before` in front of each of `characters`.
std::string escaped(std::string_view text, std::string_view characters, std::string_view before) {
  std::string result;
  for (const char c : text) {
    if (characters.find(c) != characters.npos) result += before;
    result += c;
  }
  return result;
}

/// Between single quotes, as the shell of `quote` writes one inside them.
std::string quoted(std::string_view text, std::string_view quote) {
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'') {
      result += quote;
    } else {
      result += c;
    }
  }
  return result + "'";
}

std::vector<std::string> namesOf(const std::vector<Option>& options) {
  std::vector<std::string> names;
  for (const Option& option : options) {
    names.insert(names.end(), option.names.begin(), option.names.end());
  }
  return names;
}

std::vector<std::string> namesOf(const std::vector<Command>& commands) {
  std::vector<std::string> names;
  names.reserve(commands.size());
  for (const Command& command : commands) names.push_back(command.name);
  return names;
}

Value positionalOf(const Command& command) {
  return command.positionals.empty() ? Value::kNone : command.positionals.front().value;
}

/// The command that fills COMPREPLY; nothing where there is nothing to propose.
std::string bashReply(Value value, const std::vector<std::string>& words) {
  const std::string action = value == Value::kWords       ? "-W '" + joined(words) + "'"
                             : value == Value::kFile      ? "-f"
                             : value == Value::kDirectory ? "-d"
                                                          : "";
  if (action.empty()) return ":";
  return "mapfile -t COMPREPLY < <(compgen " + action + " -- \"$current\")";
}

std::string bashCompletion(const std::vector<Command>& commands, const CLI::App& app) {
  std::string values;
  std::string options;
  for (const Command& command : commands) {
    for (const Option& option : command.options) {
      if (option.value == Value::kNone) continue;
      std::vector<std::string> patterns;
      for (const std::string& name : option.names) {
        patterns.push_back("'" + command.name + " " + name + "'");
      }
      values += "    " + joined(patterns, " | ") + ") " + bashReply(option.value, option.words) +
                "; return ;;\n";
    }
    const auto& positionals = command.positionals;
    const auto words = positionals.empty() ? std::vector<std::string>() : positionals[0].words;
    options += "    " + command.name + ") options='" + joined(namesOf(command.options)) +
               "'\n      " + bashReply(positionalOf(command), words) + " ;;\n";
  }
  return "# Completes the command prismal in bash.\n"
         "_prismal() {\n"
         "  local current=\"${COMP_WORDS[COMP_CWORD]}\" previous=\"${COMP_WORDS[COMP_CWORD - "
         "1]}\"\n"
         "  local command='' options='' word\n"
         "  for word in \"${COMP_WORDS[@]:1:COMP_CWORD - 1}\"; do\n"
         "    case \"$word\" in -*) ;; *) command=\"$word\"; break ;; esac\n"
         "  done\n"
         "  COMPREPLY=()\n"
         "  case \"$command $previous\" in\n" +
         values +
         "  esac\n"
         "  case \"$command\" in\n"
         "    '') options='" +
         joined(namesOf(optionsOf(app))) + "'\n      " +
         bashReply(Value::kWords, namesOf(commands)) + " ;;\n" + options +
         "  esac\n"
         "  if [[ \"$current\" == -* ]]; then\n"
         "    mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$current\")\n"
         "  fi\n"
         "}\n"
         "complete -o filenames -F _prismal prismal\n";
}

std::string zshAction(const Option& option) {
  switch (option.value) {
    case Value::kWords:
      return "(" + joined(option.words) + ")";
    case Value::kFile:
      return "_files";
    case Value::kDirectory:
      return "_files -/";
    default:
      return " ";
  }
}

std::string zshText(std::string_view text) {
  return escaped(text, "[]:\\", "\\");
}

/// One specification for _arguments, or several when the option has several names.
std::string zshSpecifications(const Option& option) {
  constexpr std::string_view kQuote = "'\\''";
  const std::string value = option.value == Value::kNone
                                ? ""
                                : ":" + zshText(option.placeholder) + ":" + zshAction(option);
  if (option.names.empty()) return " " + quoted("*" + value, kQuote);
  const std::string described = "[" + zshText(option.description) + "]" + value;
  std::string specifications;
  for (const std::string& name : option.names) {
    // Any number of times: which options may be repeated is no business of a completion.
    const std::string specification = std::string("*").append(name).append(described);
    specifications.append(" \\\n        ").append(quoted(specification, kQuote));
  }
  return specifications;
}

std::string zshCompletion(const std::vector<Command>& commands, const CLI::App& app) {
  constexpr std::string_view kQuote = "'\\''";
  std::string names;
  std::string cases;
  for (const Command& command : commands) {
    names += "    " + quoted(command.name + ":" + zshText(command.description), kQuote) + "\n";
    cases += "    " + command.name + ")\n      _arguments";
    for (const Option& option : command.options) cases += zshSpecifications(option);
    for (const Option& positional : command.positionals) cases += zshSpecifications(positional);
    cases += " ;;\n";
  }
  std::string own;
  for (const Option& option : optionsOf(app)) own += zshSpecifications(option);
  return "#compdef prismal\n"
         "# Completes the command prismal in zsh.\n"
         "_prismal() {\n"
         "  local -a commands\n"
         "  commands=(\n" +
         names +
         "  )\n"
         "  if (( CURRENT == 2 )); then\n"
         "    _describe command commands\n"
         "    _arguments" +
         own +
         "\n"
         "    return\n"
         "  fi\n"
         "  local command=$words[2]\n"
         "  shift words\n"
         "  (( CURRENT-- ))\n"
         "  case $command in\n" +
         cases +
         "  esac\n"
         "}\n"
         "_prismal \"$@\"\n";
}

std::string fishLine(const std::string& condition, const Option& option) {
  constexpr std::string_view kQuote = "\\'";
  std::string line = "complete -c prismal -n '" + condition + "'";
  for (const std::string& name : option.names) {
    line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  if (option.value == Value::kWords) line += " -x -a " + quoted(joined(option.words), kQuote);
  if (option.value == Value::kFile) line += " -r -F";
  if (option.value == Value::kDirectory) line += " -x -a '(__fish_complete_directories)'";
  if (option.value == Value::kOther) line += " -x";
  return line + " -d " + quoted(escaped(option.description, "\\", "\\"), kQuote) + "\n";
}

std::string fishCompletion(const std::vector<Command>& commands, const CLI::App& app) {
  std::string text =
      "# Completes the command prismal in fish.\n"
      "complete -c prismal -f\n";
  for (const Option& option : optionsOf(app)) text += fishLine("__fish_use_subcommand", option);
  for (const Command& command : commands) {
    text += "complete -c prismal -n __fish_use_subcommand -a " + command.name + " -d " +
            quoted(command.description, "\\'") + "\n";
    const std::string condition = "__fish_seen_subcommand_from " + command.name;
    for (const Option& option : command.options) text += fishLine(condition, option);
    for (const Option& positional : command.positionals) text += fishLine(condition, positional);
  }
  return text;
}

}  // namespace

std::string completionFor(Shell shell, const CLI::App& app) {
  const auto commands = commandsOf(app);
  switch (shell) {
    case Shell::kBash:
      return bashCompletion(commands, app);
    case Shell::kZsh:
      return zshCompletion(commands, app);
    case Shell::kFish:
      return fishCompletion(commands, app);
  }
  return {};
}

}  // namespace tools::command_line
