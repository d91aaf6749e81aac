#pragma once

#include <cstddef>
#include <string_view>

#include "check/finding.h"
#include "host/plist/node.h"

namespace tools::check {

/// Finds places of a text, UTF-8, in which a line feed, a carriage return or both end a line. It
/// goes on from where it was last, so that places that follow each other cost one pass over the
/// text together, however long its lines are.
class SourceLines {
 public:
  /// The line in which `position` is, as much of it as fits on a screen; nothing where there is
  /// none. `text` must be the same at every call.
  SourceLine at(std::string_view text, host::plist::Position position);

  /// All from `position` to the end of the text; empty where there is none.
  std::string_view from(std::string_view text, host::plist::Position position);

 private:
  void begin(std::string_view text);
  bool goTo(std::string_view text, host::plist::Position position);
  void startLine(std::string_view text, std::size_t offset);

  bool hasReturns_ = false;
  host::plist::Position place_;  // none before the first call
  std::size_t offset_ = 0;
  std::size_t endOfLine_ = 0;
};

}  // namespace tools::check
