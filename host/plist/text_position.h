#pragma once

#include <cstddef>
#include <string_view>

#include "host/plist/node.h"

namespace host::plist {

/// Turns offsets in a text (UTF-8; a line feed, a carriage return or both end a line) into
/// positions. Offsets that grow from call to call cost one pass over the text together.
class TextPosition {
 public:
  /// `text` must outlive this.
  explicit TextPosition(std::string_view text)
      : text_(text), hasReturns_(text.find('\r') != std::string_view::npos) {}

  /// The position of the character at `offset`, at most the length of the text.
  Position at(std::size_t offset);

 private:
  /// Behind the first end of a line that begins at `from` or later and before `to`; none: npos.
  std::size_t nextLine(std::size_t from, std::size_t to) const;

  std::string_view text_;
  bool hasReturns_;
  std::size_t offset_ = 0;
  Position position_ = {1, 1};
};

}  // namespace host::plist
