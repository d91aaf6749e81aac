#pragma once

// The keys that a tablet's keyboard has, whole or in two halves. Of two keys that do the same, the
// left one is named like the phone's.

#include "host/keyboard/boards/english_keys.h"
#include "host/keyboard/boards/keys.h"

namespace host::boards::tablet {

using namespace english;

inline constexpr Key kDelete = drawn("Delete-Key", Shape::delete_left, DisplayType::delete_left);
inline constexpr Key kDismiss = drawn("Dismiss-Key", Shape::dismiss, DisplayType::dismiss);
inline constexpr Key kUndo = function("Undo-Key", "undo", DisplayType::undo, 2);
inline constexpr Key kRedo = function("Redo-Key", "redo", DisplayType::redo, 2);

inline constexpr Key kShift = drawn("Shift-Key", Shape::shift, DisplayType::shift);
inline constexpr Key kShiftRight = drawn("Shift-Key-Right", Shape::shift, DisplayType::shift);
inline constexpr Key kToAlternate = function("Shift-Key", "#+=", DisplayType::shift);
inline constexpr Key kToAlternateRight = function("Shift-Key-Right", "#+=", DisplayType::shift, 2);
inline constexpr Key kToNumbers = function("Shift-Key", "123", DisplayType::shift);
inline constexpr Key kToNumbersRight = function("Shift-Key-Right", "123", DisplayType::shift, 2);

inline constexpr Key kToMarks = function("More-Key", ".?123", DisplayType::more);
inline constexpr Key kToMarksRight = function("More-Key-Right", ".?123", DisplayType::more);
inline constexpr Key kToLetters = function("More-Key", "ABC", DisplayType::more);
inline constexpr Key kToLettersRight = function("More-Key-Right", "ABC", DisplayType::more);

/// Among letters these two stand for two marks each.
inline constexpr auto kLetterMarks = joined(below("!", kComma), below("?", kFullStop));

inline constexpr auto kSwitches =
    joined(only(Presence::with_international_key,
                drawn("International-Key", Shape::globe, DisplayType::international)),
           only(Presence::with_dictation_key,
                drawn("Dictation-Key", Shape::microphone, DisplayType::dictation)));

}  // namespace host::boards::tablet
