#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "check/finding.h"

namespace tools::check {

/// What came of checking one theme.
struct Report {
  std::string file;
  std::vector<Finding> findings;
  /// Why it could not be checked, when it is not the theme's fault.
  std::string trouble;

  bool isUnreadable() const;
};

/// All findings of the theme at `path`. Makes this program a process with a keyboard: once a
/// process.
Report checkTheme(const std::string& path, const std::filesystem::path& library);

/// A report on its way from one process to another.
std::string packed(const Report& report);
Report unpacked(const std::string& text);

}  // namespace tools::check
