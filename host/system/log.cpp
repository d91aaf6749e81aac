#include "host/system/log.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <string>
#include <syslog.h>
#include <unistd.h>
#include <utility>

#include "host/plist/description.h"
#include "host/plist/limits.h"
#include "host/runtime/trace.h"
#include "platform/foundation.h"

namespace host::system {

namespace {

std::function<void(std::string_view)>& logEcho() {
  static std::function<void(std::string_view)> echo;
  return echo;
}

struct ArgumentText {
  std::string operator()(std::monostate) const { return "(null)"; }
  std::string operator()(std::string_view text) const {
    return plist::inOneLine(text, plist::kMaxDescribedBytes);
  }
  std::string operator()(platform::PropertyListView value) const { return plist::describe(value); }
  std::string operator()(int number) const { return std::to_string(number); }
  std::string operator()(const void* address) const {
    std::array<char, 2 * sizeof address> digits{};
    const auto end =
        std::to_chars(digits.begin(), digits.end(), reinterpret_cast<std::uintptr_t>(address), 16);
    return "0x" + std::string(digits.begin(), end.ptr);
  }
};

/// Whether anybody takes lines for the system log. Asked first: the C library would prepare the
/// whole line, for which it reads the time zone, before it notices that nobody does.
bool somebodyLogs() {
  return ::access(_PATH_LOG, F_OK) == 0;
}

/// `format` with each conversion replaced. What an argument holds is never read as a format.
std::string formatLine(std::string_view format,
                       std::initializer_list<platform::LogArgument> arguments) {
  std::string line;
  const auto* next = arguments.begin();
  for (;;) {
    const auto percent = format.find('%');
    line.append(format.substr(0, percent));
    if (percent == std::string_view::npos || percent + 1 == format.size()) return line;
    if (next != arguments.end()) line += std::visit(ArgumentText(), (next++)->value());
    format.remove_prefix(percent + 2);
  }
}

/// Whether the system log may have another line of this process. What logs without end would slow
/// the keyboard down, and drive the lines of others out of the log.
bool mayLog() {
  using Clock = std::chrono::steady_clock;
  static Clock::time_point secondBegan;
  static int lines = 0;
  const auto now = Clock::now();
  if (now - secondBegan >= std::chrono::seconds(1)) {
    secondBegan = now;
    lines = 0;
  }
  return lines++ < kMaxLinesASecond;
}

/// `line` in the system log, unless there are too many.
void logToSystem(const std::string& line) {
  if (mayLog() && somebodyLogs()) syslog(LOG_USER | LOG_NOTICE, "%s", line.c_str());
}

}  // namespace

void setLogEcho(std::function<void(std::string_view)> echo) {
  logEcho() = std::move(echo);
}

void openLog() {
  openlog(nullptr, LOG_NDELAY, LOG_USER);
  tzset();  // lines bear the local time, which stands in a file
}

}  // namespace host::system

namespace platform {

void NSLog(std::string_view format, std::initializer_list<LogArgument> arguments) {
  const std::string line = host::system::formatLine(format, arguments);
  host::runtime::record(host::runtime::Event::Kind::kLog, line);
  host::system::logToSystem(line);
  if (const auto& echo = host::system::logEcho()) echo(line);
}

}  // namespace platform
