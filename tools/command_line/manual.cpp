#include "command_line/manual.h"

#include <CLI/App.hpp>
#include <string_view>

#include "command_line/model.h"

namespace tools::command_line {

namespace {

/// `text` without a meaning to Markdown.
std::string plain(std::string_view text) {
  constexpr std::string_view kMeaningful = "\\`*_[]<>#~^|";
  std::string result;
  for (const char c : text) {
    if (kMeaningful.find(c) != kMeaningful.npos) result += '\\';
    result += c;
  }
  return result;
}

std::string synopsisLine(const Command& command) {
  std::string line = "    prismal " + command.name;
  if (!command.options.empty()) line += " [OPTION...]";
  for (const Option& positional : command.positionals) {
    const std::string argument = positional.placeholder + (positional.repeats ? "..." : "");
    line += positional.required ? " " + argument : " [" + argument + "]";
  }
  return line + "\n";
}

std::string synopsis(const Command& command) {
  std::string lines = synopsisLine(command);
  for (const Command& nested : command.commands) lines += synopsisLine(nested);
  return lines + "\n";
}

/// A term and what it means, as a definition list has them.
std::string definition(const Option& option) {
  std::string term;
  for (const std::string& name : option.names) {
    if (!term.empty()) term += ", ";
    term += "**" + plain(name) + "**";
  }
  if (!option.placeholder.empty()) {
    term += (term.empty() ? "*" : " *") + plain(option.placeholder) + "*";
  }
  return term + "\n\n:   " + plain(option.description) + "\n\n";
}

/// Examples stand as they are; all before them is prose, whose lines were broken for a terminal.
std::string footer(std::string_view text) {
  const auto start = text.find("Example");
  std::string result;
  for (const std::string& line : CLI::detail::split(std::string(text.substr(0, start)), '\n')) {
    if (line.starts_with("Exit status")) result += '\n';  // a paragraph of its own
    result += plain(line) + "\n";
  }
  result += "\n";
  if (start == text.npos) return result;
  result += text.substr(start).starts_with("Examples") ? "Examples:\n\n" : "Example:\n\n";
  const auto lines = CLI::detail::split(std::string(text.substr(start)), '\n');
  for (const std::string& line : lines) {
    const bool isHeading = line.starts_with("Example") && line.ends_with(":");
    if (isHeading) continue;
    constexpr std::string_view kInline = "Example: ";
    const std::string example = line.starts_with(kInline) ? line.substr(kInline.size()) : line;
    result +=
        "    " + example.substr(std::min(example.find_first_not_of(' '), example.size())) + "\n";
  }
  return result + "\n";
}

/// Arguments and options, each with what it means.
std::string definitions(const Command& command) {
  std::string text;
  for (const Option& positional : command.positionals) text += definition(positional);
  for (const Option& option : command.options) text += definition(option);
  return text;
}

std::string nestedCommand(const Command& command) {
  return "### prismal " + command.name + "\n\n" + plain(command.description) + ".\n\n" +
         definitions(command);
}

}  // namespace

std::string manualOf(const CLI::App& app) {
  std::string text;
  for (const Command& command : commandsOf(app)) {
    text += "## prismal " + command.name + "\n\n" + plain(command.description) + ".\n\n" +
            synopsis(command) + definitions(command) + footer(command.footer);
    for (const Command& nested : command.commands) text += nestedCommand(nested);
  }
  return text;
}

}  // namespace tools::command_line
