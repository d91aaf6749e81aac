#include "check/source_lines.h"

#include <algorithm>
#include <string>

#include "host/plist/utf8.h"

namespace tools::check {

using host::plist::firstUtf8Character;
using host::plist::Position;

void SourceLines::startLine(std::string_view text, std::size_t offset) {
  ++place_.line;
  place_.column = 1;
  offset_ = offset;
  // Nearly all files have line feeds alone, which are found faster.
  const auto end = hasReturns_ ? text.find_first_of("\r\n", offset) : text.find('\n', offset);
  endOfLine_ = std::min(end, text.size());
}

void SourceLines::begin(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  hasReturns_ = text.find('\r') != text.npos;
  place_ = {};
  startLine(text, text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
}

bool SourceLines::goTo(std::string_view text, Position position) {
  if (position.line == 0) return false;
  const bool isBehind = place_.line > position.line ||
                        (place_.line == position.line && place_.column > position.column);
  if (place_.line == 0 || isBehind) begin(text);
  while (place_.line < position.line) {
    if (endOfLine_ == text.size()) return false;
    startLine(text, endOfLine_ + (text.substr(endOfLine_).starts_with("\r\n") ? 2 : 1));
  }
  for (; place_.column < position.column && offset_ < endOfLine_; ++place_.column) {
    offset_ += firstUtf8Character(text.substr(offset_)).length;
  }
  return true;
}

SourceLine SourceLines::at(std::string_view text, Position position) {
  constexpr std::uint32_t kBefore = 60;
  constexpr std::uint32_t kMost = 100;
  const std::uint32_t dropped = position.column > kMost ? position.column - kBefore : 0;
  if (!goTo(text, {position.line, dropped + 1})) return {};
  std::size_t end = offset_;
  for (std::uint32_t count = 0; count < kMost && end < endOfLine_; ++count) {
    end += firstUtf8Character(text.substr(end)).length;
  }
  return {std::string(text.substr(offset_, end - offset_)), position.column - dropped};
}

std::string_view SourceLines::from(std::string_view text, Position position) {
  return goTo(text, position) ? text.substr(offset_) : "";
}

}  // namespace tools::check
