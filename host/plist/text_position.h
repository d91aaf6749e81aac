#pragma once

#include <cstddef>
#include <string_view>

#include "host/plist/node.h"

namespace host::plist {

/// Turns offsets in a text (UTF-8, line feeds end lines) into positions. Offsets that grow from
/// call to call cost one pass over the text together.
class TextPosition {
 public:
  /// `text` must outlive this.
  explicit TextPosition(std::string_view text) : text_(text) {}

  /// The position of the character at `offset`, at most the length of the text.
  Position at(std::size_t offset);

 private:
  std::string_view text_;
  std::size_t offset_ = 0;
  Position position_ = {1, 1};
};

}  // namespace host::plist
