#pragma once

// The command line as data, read from its definition, for what is made from it: completions and the
// manual. Nobody writes an option down twice.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli_app.h"

namespace tools::command_line {

/// What stands behind an option, or for a positional argument.
enum class Value : std::uint8_t { kNone, kWords, kListed, kFile, kDirectory, kOther };

/// What a placeholder stands for that --help has no room to spell out, or can't know.
struct Vocabulary {
  std::string_view command;
  std::string_view placeholder;
  std::vector<std::string> words;  ///< all of them; none when `lister` tells them
  std::string lister = {};         ///< what prints them, a line each, in every shell
};

struct Option {
  std::vector<std::string>
      names;                ///< with their hyphens, the short ones first; none of a positional
  std::string placeholder;  ///< what --help writes for the value
  Value value = Value::kNone;
  std::vector<std::string> words;  ///< all that the value can be; only of kWords
  std::string lister;              ///< what prints all that it can be; only of kListed
  std::string description;
  bool required = false;
  bool repeats = false;  ///< of a positional: it takes all that follow
};

struct Command {
  std::string name;  ///< with those of the commands around it: "settings background"
  std::string description;
  std::vector<Option> options;
  std::vector<Option> positionals;
  std::vector<Command> commands;
  std::string footer;
};

/// The commands that --help lists, in its order.
std::vector<Command> commandsOf(const CLI::App& app, std::span<const Vocabulary> vocabulary = {});

/// All of `commands`, which must outlive the answer, each followed by the ones inside it.
std::vector<const Command*> withNested(const std::vector<Command>& commands);

/// The options of `app` itself.
std::vector<Option> optionsOf(const CLI::App& app);

}  // namespace tools::command_line
