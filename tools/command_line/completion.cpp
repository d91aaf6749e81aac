#include "command_line/completion.h"

#include <CLI/App.hpp>
#include <vector>

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

/// What the commands are called behind the one around them.
std::vector<std::string> lastWordsOf(const std::vector<Command>& commands) {
  std::vector<std::string> words;
  words.reserve(commands.size());
  for (const Command& command : commands) {
    words.push_back(command.name.substr(command.name.rfind(' ') + 1));
  }
  return words;
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

std::string bashReply(const Option& option) {
  if (option.value != Value::kListed) return bashReply(option.value, option.words);
  // compgen would expand what is listed, and split it at spaces.
  return "mapfile -t COMPREPLY < <(" + option.lister +
         " |\n      while IFS= read -r word; do\n"
         "        [[ \"$word\" != \"$current\"* ]] || printf '%s\\n' \"$word\"\n      done)";
}

/// The names of `option` as patterns behind its command's name.
std::string bashPatterns(const Command& command, const Option& option) {
  std::vector<std::string> patterns;
  for (const std::string& name : option.names) {
    patterns.push_back("'" + command.name + " " + name + "'");
  }
  return joined(patterns, " | ");
}

/// What to propose at each place behind a command: its nested commands, or its positionals.
std::string bashPlaces(const Command& command) {
  std::string places;
  if (!command.commands.empty()) {
    places += "    '" + command.name + " 0') " +
              bashReply(Value::kWords, lastWordsOf(command.commands)) + " ;;\n";
  }
  int place = 0;
  for (const Option& positional : command.positionals) {
    const std::string number = positional.repeats ? "'*" : std::to_string(place) + "'";
    places += "    '" + command.name + " " + number + ") " + bashReply(positional) + " ;;\n";
    ++place;
  }
  return places;
}

std::string bashCompletion(const std::vector<Command>& commands, const CLI::App& app) {
  std::vector<std::string> known;
  std::vector<std::string> taking;
  std::string values;
  std::string options;
  std::string places;
  for (const Command* const command : withNested(commands)) {
    const bool isNested = command->name.find(' ') != std::string::npos;
    known.push_back("'" + std::string(isNested ? "" : " ") + command->name + "'");
    for (const Option& option : command->options) {
      if (option.value == Value::kNone) continue;
      const std::string patterns = bashPatterns(*command, option);
      taking.push_back(patterns);
      values += "    " + patterns + ") " + bashReply(option) + "; return ;;\n";
    }
    options +=
        "    '" + command->name + "') options='" + joined(namesOf(command->options)) + "' ;;\n";
    places += bashPlaces(*command);
  }
  return "# Completes the command prismal in bash.\n"
         "_prismal() {\n"
         "  local command='' options='' word is_value='' place=0\n"
         "  # Bash takes the equals sign of --option=value for a word.\n"
         "  local -a words=()\n"
         "  for word in \"${COMP_WORDS[@]:0:COMP_CWORD + 1}\"; do\n"
         "    [ \"$word\" = '=' ] || words+=(\"$word\")\n"
         "  done\n"
         "  [ \"${COMP_WORDS[COMP_CWORD]}\" != '=' ] || words+=('')\n"
         "  local current=\"${words[-1]}\" previous=\"${words[-2]}\"\n"
         "  for word in \"${words[@]:1:${#words[@]} - 2}\"; do\n"
         "    if [ -n \"$is_value\" ]; then is_value=''; continue; fi\n"
         "    case \"$command $word\" in\n"
         "      " +
         joined(taking, " | \\\n        ") +
         ") is_value=1 ;;\n"
         "      *' '-*) ;;\n"
         "      " +
         joined(known, " | \\\n        ") +
         ")\n"
         "        command=\"${command:+$command }$word\"; place=0 ;;\n"
         "      *) place=$((place + 1)) ;;\n"
         "    esac\n"
         "  done\n"
         "  COMPREPLY=()\n"
         "  case \"$command $previous\" in\n" +
         values +
         "  esac\n"
         "  case \"$command\" in\n"
         "    '') options='" +
         joined(namesOf(optionsOf(app))) + "' ;;\n" + options +
         "  esac\n"
         "  if [[ \"$current\" == -* ]]; then\n"
         "    mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$current\")\n"
         "    return\n"
         "  fi\n"
         "  case \"$command $place\" in\n"
         "    ' 0') " +
         bashReply(Value::kWords, lastWordsOf(commands)) + " ;;\n" + places +
         "  esac\n"
         "}\n"
         "complete -o filenames -F _prismal prismal\n";
}

std::string zshAction(const Option& option) {
  switch (option.value) {
    case Value::kWords:
      return "(" + joined(option.words) + ")";
    case Value::kListed:
      return "{compadd -- ${(f)\"$(" + option.lister + ")\"}}";
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

/// One entry for _arguments, or several when the option has several names; `place` counts
/// positionals from 1.
std::string zshEntries(const Option& option, int place = 0) {
  constexpr std::string_view kQuote = "'\\''";
  const std::string value = option.value == Value::kNone
                                ? ""
                                : ":" + zshText(option.placeholder) + ":" + zshAction(option);
  if (option.names.empty()) {
    const std::string number = option.repeats ? "*" : std::to_string(place);
    const std::string optional = option.required || option.repeats ? "" : ":";
    return " \\\n        " + quoted(number + optional + value, kQuote);
  }
  const std::string described = "[" + zshText(option.description) + "]" + value;
  std::string entries;
  for (const std::string& name : option.names) {
    // Any number of times: which options may be repeated is no business of a completion.
    const std::string entry = std::string("*").append(name).append(described);
    entries.append(" \\\n        ").append(quoted(entry, kQuote));
  }
  return entries;
}

/// `commands` with what they do, for _describe.
std::string zshNames(const std::vector<Command>& commands) {
  std::string names;
  const auto words = lastWordsOf(commands);
  for (std::size_t i = 0; i < commands.size(); ++i) {
    names += "    " + quoted(words[i] + ":" + zshText(commands[i].description), "'\\''") + "\n";
  }
  return names;
}

std::string zshCase(const Command& command) {
  std::string entries;
  for (const Option& option : command.options) entries += zshEntries(option);
  int place = 0;
  for (const Option& positional : command.positionals) {
    entries += zshEntries(positional, ++place);
  }
  if (!command.commands.empty()) {
    const std::string words = "1:command:(" + joined(lastWordsOf(command.commands)) + ")";
    entries += " \\\n        " + quoted(words, "'\\''");
  }
  return "    " + quoted(command.name, "'\\''") + ")\n      _arguments" + entries + " ;;\n";
}

std::string zshCompletion(const std::vector<Command>& commands, const CLI::App& app) {
  std::vector<std::string> nested;
  std::string cases;
  for (const Command* const command : withNested(commands)) {
    cases += zshCase(*command);
    if (command->name.find(' ') != std::string::npos) nested.push_back("'" + command->name + "'");
  }
  std::string own;
  for (const Option& option : optionsOf(app)) own += zshEntries(option);
  return "#compdef prismal\n"
         "# Completes the command prismal in zsh.\n"
         "_prismal() {\n"
         "  local -a commands\n"
         "  commands=(\n" +
         zshNames(commands) +
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
         "  if (( CURRENT > 2 )); then\n"
         "    case \"$command $words[2]\" in " +
         joined(nested, " | ") +
         ")\n"
         "      command=\"$command $words[2]\"\n"
         "      shift words\n"
         "      (( CURRENT-- )) ;;\n"
         "    esac\n"
         "  fi\n"
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
  if (option.value == Value::kListed) line += " -x -a " + quoted("(" + option.lister + ")", kQuote);
  if (option.value == Value::kFile) line += " -r -F";
  if (option.value == Value::kDirectory) line += " -x -a '(__fish_complete_directories)'";
  if (option.value == Value::kOther) line += " -x";
  return line + " -d " + quoted(escaped(option.description, "\\", "\\"), kQuote) + "\n";
}

/// A word that is a command where `condition` holds.
std::string fishWord(const std::string& condition, const std::string& word,
                     const std::string& description) {
  return "complete -c prismal -n '" + condition + "' -a " + word + " -d " +
         quoted(description, "\\'") + "\n";
}

/// What fish proposes behind the `depth` words of a command, where `condition` holds.
// NOLINTNEXTLINE(misc-no-recursion): as deep as commands are nested
std::string fishLines(const Command& command, const std::string& condition, std::size_t depth) {
  std::string text;
  for (const Option& option : command.options) text += fishLine(condition, option);
  std::size_t words = 1 + depth;
  for (const Option& positional : command.positionals) {
    // Only where there are several does it matter which of them it is.
    const bool isOnly = command.positionals.size() == 1;
    const std::string here = "; and test (count (commandline -opc)) -eq " + std::to_string(words++);
    text += fishLine(isOnly ? condition : condition + here, positional);
  }
  const auto nested = lastWordsOf(command.commands);
  for (std::size_t i = 0; i < nested.size(); ++i) {
    text += fishWord(condition + "; and not __fish_seen_subcommand_from " + joined(nested),
                     nested[i], command.commands[i].description);
    text += fishLines(command.commands[i],
                      condition + "; and __fish_seen_subcommand_from " + nested[i], depth + 1);
  }
  return text;
}

std::string fishCompletion(const std::vector<Command>& commands, const CLI::App& app) {
  std::string text =
      "# Completes the command prismal in fish.\n"
      "complete -c prismal -f\n";
  for (const Option& option : optionsOf(app)) text += fishLine("__fish_use_subcommand", option);
  for (const Command& command : commands) {
    text += fishWord("__fish_use_subcommand", command.name, command.description);
    text += fishLines(command, "__fish_seen_subcommand_from " + command.name, 1);
  }
  return text;
}

}  // namespace

std::string completionFor(Shell shell, const CLI::App& app,
                          std::span<const Vocabulary> vocabulary) {
  const auto commands = commandsOf(app, vocabulary);
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
