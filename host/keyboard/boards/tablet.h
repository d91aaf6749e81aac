#pragma once

// A tablet's keyboard in one piece: eleven units wide, four rows.

#include "host/keyboard/boards/tablet_keys.h"

namespace host::boards {
namespace tablet_whole {

using namespace tablet;

inline constexpr Key kReturn = returnKey(1.5);

inline constexpr auto kSmall1 = joined(kSmallQToT, kSmallYToP, kDelete);
inline constexpr auto kSmall2 = joined(after(0.5, kSmallAToG), kSmallHToL, kReturn);
inline constexpr auto kSmall3 = joined(kShift, kSmallZToV, kSmallBToM, kLetterMarks, kShiftRight);

inline constexpr auto kCapital1 = joined(kCapitalQToT, kCapitalYToP, kDelete);
inline constexpr auto kCapital2 = joined(after(0.5, kCapitalAToG), kCapitalHToL, kReturn);
inline constexpr auto kCapital3 =
    joined(kShift, kCapitalZToV, kCapitalBToM, kLetterMarks, kShiftRight);

inline constexpr auto kMarks =
    joined(kFullStop, kComma, kQuestionMark, kExclamationMark, kApostrophe, kQuotationMark);

inline constexpr auto kNumbers1 = joined(k1To5, k6To0, kDelete);
inline constexpr auto kNumbers2 =
    joined(after(0.5, kHyphenToLeftParenthesis), kRightParenthesisToAt, kReturn);
inline constexpr auto kNumbers3 = joined(kToAlternate, kUndo, kMarks, kToAlternateRight);

inline constexpr auto kAlternate1 =
    joined(kLeftSquareBracketToNumberSign, kPercentSignToEqualsSign, kDelete);
inline constexpr auto kAlternate2 =
    joined(after(0.5, kLowLineToLessThanSign), kGreaterThanSignToYenSign, kReturn);
inline constexpr auto kAlternate3 = joined(kToNumbers, kRedo, kMarks, kToNumbersRight);

inline constexpr auto kLettersBottom =
    joined(kToMarks, kSwitches, space("Space-Key"), kToMarksRight, kDismiss);
inline constexpr auto kNumbersBottom =
    joined(kToLetters, kSwitches, space("Space-Key"), kToLettersRight, kDismiss);

inline constexpr auto kSmallRows = rowsOf(kSmall1, kSmall2, kSmall3, kLettersBottom);
inline constexpr auto kCapitalRows = rowsOf(kCapital1, kCapital2, kCapital3, kLettersBottom);
inline constexpr auto kNumbersRows = rowsOf(kNumbers1, kNumbers2, kNumbers3, kNumbersBottom);
inline constexpr auto kAlternateRows =
    rowsOf(kAlternate1, kAlternate2, kAlternate3, kNumbersBottom);

inline constexpr auto kKeyplanes =
    keyplanesOf(kSmallRows, kCapitalRows, kNumbersRows, kAlternateRows);

}  // namespace tablet_whole

inline constexpr Board kTablet = {
    .name = "Tablet",
    .is_tablet = true,
    .visual_styles = {.portrait = {.letters = 6, .numbers = 8},
                      .landscape = {.letters = 7, .numbers = 10},
                      .alert = 9},
    .portrait = {.size = {768, 264},
                 .unit = 69,
                 .margin = 4.5,
                 .top = 8,
                 .row_pitch = 64,
                 .face_height = 55,
                 .face_gap = 11,
                 .corner_radius = 5},
    .landscape = {.size = {1024, 352},
                  .unit = 92,
                  .margin = 6,
                  .top = 9,
                  .row_pitch = 86,
                  .face_height = 75,
                  .face_gap = 14,
                  .corner_radius = 6},
    .keyplanes = tablet_whole::kKeyplanes,
};

}  // namespace host::boards
