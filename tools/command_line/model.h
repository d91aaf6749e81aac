#pragma once

// The command line as data, read from its definition, for what is made from it: completions and the
// manual. Nobody writes an option down twice.

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <vector>

namespace tools::command_line {

/// What stands behind an option, or for a positional argument.
enum class Value : std::uint8_t { kNone, kWords, kFile, kDirectory, kOther };

struct Option {
  std::vector<std::string>
      names;                ///< with their hyphens, the short ones first; none of a positional
  std::string placeholder;  ///< what --help writes for the value
  Value value = Value::kNone;
  std::vector<std::string> words;  ///< all that the value can be; only of kWords
  std::string description;
  bool required = false;
};

struct Command {
  std::string name;
  std::string description;
  std::vector<Option> options;
  std::vector<Option> positionals;
  std::string footer;
};

/// The commands that --help lists, in its order.
std::vector<Command> commandsOf(const CLI::App& app);

/// The options of `app` itself.
std::vector<Option> optionsOf(const CLI::App& app);

}  // namespace tools::command_line
