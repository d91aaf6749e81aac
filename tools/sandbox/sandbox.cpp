#include "sandbox/sandbox.h"

#include <CLI/App.hpp>
#include <cstdio>

#include "sandbox/landlock.h"
#include "sandbox/system_calls.h"

namespace tools::sandbox {

namespace {

/// What is to be told of a kernel that offers this much; null when it offers all.
const char* missing(bool hasRules, bool hasFilter) {
  if (hasRules && hasFilter) return nullptr;
  if (hasRules) return "the sandbox leaves the network open: this kernel offers no seccomp filters";
  if (hasFilter) return "the sandbox leaves files open: this kernel offers no Landlock";
  return "no sandbox: this kernel offers neither Landlock nor seccomp filters";
}

}  // namespace

void addSandboxOption(CLI::App& command, bool& asked) {
  CLI::Option* const with = command.add_flag_callback(
      "--sandbox", [&asked] { asked = true; },
      "Take from the process that reads the theme all files but its own, the network and other "
      "programs; so it is anyway, where the kernel can");
  command
      .add_flag_callback(
          "--no-sandbox", [&asked] { asked = false; }, "Read the theme without any of that")
      ->excludes(with);
}

bool isToBeUsed(bool asked, std::string_view command) {
#ifdef PRISMAL_COVERAGE
  return false;  // nobody could write down which lines were reached
#endif
  if (!asked) return false;
  const bool hasRules = FileRules::areOffered();
  const bool hasFilter = isFilterOffered();
  if (const char* const reason = missing(hasRules, hasFilter)) {
    std::fprintf(stderr, "prismal %.*s: %s; --no-sandbox leaves this line out\n",
                 static_cast<int>(command.size()), command.data(), reason);
  }
  return hasRules || hasFilter;
}

}  // namespace tools::sandbox
