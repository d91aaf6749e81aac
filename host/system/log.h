#pragma once

#include <functional>
#include <string_view>

namespace host::system {

/// Where log lines go besides the system log: called with each line, without a line end. None at
/// first.
void setLogEcho(std::function<void(std::string_view line)> echo);

}  // namespace host::system
