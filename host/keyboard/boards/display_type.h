#pragma once

#include <string_view>

namespace host::boards {

/// What kind of key a key is. The numbers are what a key answers when asked.
enum class DisplayType : int {
  letter,
  shift,
  delete_left,
  space,
  return_key,
  more,
  international,
  dictation,
  dismiss,
  undo,
  redo,
};

/// A finer kind within a display type.
enum class DisplayTypeHint : int { none, digit, punctuation };

/// The full name of display type `number`, whose first 18 characters every such name shares;
/// "UIKBKeyDisplayTypeUnknown" for a number that is none. Never ends. Any thread.
std::string_view displayTypeName(int number);

}  // namespace host::boards
