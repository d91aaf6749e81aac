#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "cli_app.h"
#include "command_line/model.h"

namespace tools::command_line {

enum class Shell : std::uint8_t { kBash, kZsh, kFish };

struct ShellWord {
  std::string_view word;
  Shell value;
};
inline constexpr ShellWord kShells[] = {
    {"bash", Shell::kBash}, {"zsh", Shell::kZsh}, {"fish", Shell::kFish}};

/// What makes the shell complete the command line that `app` defines: a file for the folder in
/// which it keeps such files. `vocabulary` has the values that the definition doesn't spell out.
std::string completionFor(Shell shell, const CLI::App& app, std::span<const Vocabulary> vocabulary);

}  // namespace tools::command_line
