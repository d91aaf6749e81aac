#include "scenario/syntax_error.h"

#include "host/plist/description.h"

namespace tools::scenario {

std::string plainReason(std::string_view what) {
  constexpr std::size_t kEnough = 300;
  if (const auto start = what.find("syntax error"); start != what.npos) what.remove_prefix(start);
  // It quotes the file's bytes as they are.
  return host::plist::escapeControls(what.substr(0, kEnough)) +
         (what.size() > kEnough ? "..." : "");
}

}  // namespace tools::scenario
