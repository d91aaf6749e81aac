#pragma once

#include <string>
#include <string_view>

namespace tools {

/// Says on standard output, in one line, what a subcommand has done; the answer is what it exits
/// with.
int sayDone(std::string_view subcommand, const std::string& line);

}  // namespace tools
