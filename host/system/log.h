#pragma once

#include <functional>
#include <string_view>

namespace host::system {

/// How many lines a process puts into the system log in a second; more are lost to it, and to it
/// alone.
inline constexpr int kMaxLinesASecond = 500;

/// Where log lines go besides the system log: called with each line, without a line end. None at
/// first.
void setLogEcho(std::function<void(std::string_view line)> echo);

/// Connects to the system log, for a process that can't once it has lines to send.
void openLog();

}  // namespace host::system
