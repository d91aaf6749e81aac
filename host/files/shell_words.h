#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace host::files {

/// A device path as a word of a shell command names it.
struct PathWord {
  /// The path, or, of a word that ends in a pattern, the directory that the pattern looks in.
  std::string path;
  /// Shell text of the pattern in the last component; empty when there is none.
  std::string pattern;
  /// Whether the program takes away what the word names: a symbolic link there goes itself.
  bool removed = false;
};

/// Shell text that names `word`; none when it can't be named safely.
using NameInShell = std::function<std::optional<std::string>(const PathWord& word)>;

/// `command` with each device path replaced by what `name` calls it. A device path is a word that
/// begins with `/` once its quotes are off, other than the program that is run and /dev/null. All
/// else stays as it is, byte for byte. None when a path can't be held inside the root: the command
/// has an expansion ($, `, ~) in it, a path has a pattern before its last component, a pattern for
/// a program that doesn't just remove what it names (it would follow the links among the matches),
/// or no name. None too when a quote isn't closed.
std::optional<std::string> rewriteDevicePaths(std::string_view command, const NameInShell& name);

/// `text` quoted for the shell.
std::string quotedForShell(std::string_view text);

/// `text` as a person would write it: in quotes only where they are needed.
std::string wordForShell(std::string_view text);

}  // namespace host::files
