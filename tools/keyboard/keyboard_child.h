#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "child_process.h"
#include "host/files/result.h"
#include "host/files/temporary_directory.h"
#include "keyboard/keyboard_process.h"

namespace tools::keyboard {

/// Some bytes that a copy of this process makes of a keyboard. Whatever a theme does there, it does
/// to that process; this one keeps what it needs to write a result, and clears away.
class KeyboardChild {
 public:
  using Work = std::function<host::files::Result<std::string>(const Dress&)>;

  /// Calls `work` in the copy, with `dress` and, where that calls for one, a private device; it
  /// starts the KeyboardProcess. To be called before this process has threads or a keyboard.
  static host::files::Result<KeyboardChild> start(Dress dress, const Work& work);

  /// What it made, once; or its failure. Waits for it. The bytes may be any.
  host::files::Result<std::string> bytes();

 private:
  KeyboardChild(std::optional<host::files::TemporaryDirectory> device, ChildProcess process)
      : device_(std::move(device)), process_(std::move(process)) {}

  std::optional<host::files::TemporaryDirectory> device_;  // goes after the process
  ChildProcess process_;
};

}  // namespace tools::keyboard
