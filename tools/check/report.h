#pragma once

#include <string>
#include <vector>

#include "check/finding.h"
#include "keyboard/keyboard_process.h"

namespace tools::check {

/// What came of checking one theme.
struct Report {
  std::string file;
  std::vector<Finding> findings;
  /// Why it could not be checked, when it is not the theme's fault.
  std::string trouble;

  bool isUnreadable() const;
};

/// All findings of the theme that `dress`, which has a private device, names. Makes this program a
/// process with a keyboard: once a process.
Report checkTheme(const keyboard::Dress& dress);

/// A report on its way from one process to another.
std::string packed(const Report& report);
Report unpacked(const std::string& text);

}  // namespace tools::check
