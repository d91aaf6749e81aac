#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

namespace tools {

/// Adds an option whose value is one of a few words, each of which stands for a value of `target`.
/// Without it, `target` keeps what it has. `target` must live until the command line is parsed.
template <class Value>
CLI::Option* addChoice(CLI::App& command, const std::string& name, Value& target,
                       const std::string& description,
                       const std::vector<std::pair<std::string, Value>>& choices) {
  std::vector<std::string> words;
  words.reserve(choices.size());
  for (const auto& choice : choices) words.push_back(choice.first);
  const auto take = [&target, choices](const std::string& word) {
    for (const auto& [choice, value] : choices) {
      if (choice == word) target = value;
    }
  };
  return command.add_option_function<std::string>(name, take, description)
      ->check(CLI::IsMember(words).description(""))
      ->type_name(CLI::detail::join(words, "|"));
}

}  // namespace tools
