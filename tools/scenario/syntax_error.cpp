#include "scenario/syntax_error.h"

namespace tools::scenario {

std::string plainReason(std::string_view what) {
  constexpr std::size_t kEnough = 300;
  if (const auto start = what.find("syntax error"); start != what.npos) what.remove_prefix(start);
  return std::string(what.substr(0, kEnough)) + (what.size() > kEnough ? "..." : "");
}

}  // namespace tools::scenario
