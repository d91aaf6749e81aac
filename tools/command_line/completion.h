#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <string_view>

namespace tools::command_line {

enum class Shell : std::uint8_t { kBash, kZsh, kFish };

struct ShellWord {
  std::string_view word;
  Shell value;
};
inline constexpr ShellWord kShells[] = {
    {"bash", Shell::kBash}, {"zsh", Shell::kZsh}, {"fish", Shell::kFish}};

/// What makes the shell complete the command line that `app` defines: a file for the folder in
/// which it keeps such files.
std::string completionFor(Shell shell, const CLI::App& app);

}  // namespace tools::command_line
