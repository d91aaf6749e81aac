#pragma once

#include <CLI/App.hpp>
#include <algorithm>
#include <span>
#include <string>
#include <vector>

namespace tools {

/// Adds an option whose value is one of a few words, each of which stands for a value of `target`:
/// `choices` is an array of things with a `word` and a `value`, and lives as long as the program.
/// Without the option, `target` keeps what it has. `target` must live until the command line is
/// parsed.
template <class Target, class Choice, std::size_t size>
CLI::Option* addChoice(CLI::App& command, const std::string& name, Target& target,
                       const std::string& description, const Choice (&choices)[size]) {
  std::vector<std::string> words;
  words.reserve(size);
  for (const Choice& choice : choices) words.emplace_back(choice.word);
  const auto take = [&target, all = std::span(choices)](const std::string& word) {
    for (const Choice& choice : all) {
      if (choice.word == word) target = choice.value;
    }
  };
  const auto check = [words](const std::string& word) {
    if (std::ranges::find(words, word) != words.end()) return std::string();
    return "\"" + word + "\" is none of " + CLI::detail::join(words, ", ");
  };
  return command.add_option_function<std::string>(name, take, description)
      ->check(check)
      ->type_name(CLI::detail::join(words, "|"));
}

}  // namespace tools
