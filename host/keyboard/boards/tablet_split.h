#pragma once

// A tablet's keyboard in two halves for the two thumbs: fourteen units wide, of which the three
// between the halves are empty; four rows.

#include "host/keyboard/boards/tablet_keys.h"

namespace host::boards {
namespace tablet_split {

using namespace tablet;

inline constexpr double kOpening = 3;
inline constexpr Key kReturn = returnKey(2);

inline constexpr auto kSmall1 = joined(kSmallQToT, after(kOpening, kSmallYToP), kDelete);
inline constexpr auto kSmall2 = joined(kSmallAToG, after(kOpening, kSmallHToL), kReturn);
inline constexpr auto kSmall3 =
    joined(kShift, kSmallZToV, after(kOpening, kSmallBToM), kLetterMarks, kShiftRight);

inline constexpr auto kCapital1 = joined(kCapitalQToT, after(kOpening, kCapitalYToP), kDelete);
inline constexpr auto kCapital2 = joined(kCapitalAToG, after(kOpening, kCapitalHToL), kReturn);
inline constexpr auto kCapital3 =
    joined(kShift, kCapitalZToV, after(kOpening, kCapitalBToM), kLetterMarks, kShiftRight);

inline constexpr auto kMarks = joined(kFullStop, kComma, after(kOpening, kQuestionMark),
                                      kExclamationMark, kApostrophe, kQuotationMark);

inline constexpr auto kNumbers1 = joined(k1To5, after(kOpening, k6To0), kDelete);
inline constexpr auto kNumbers2 =
    joined(kHyphenToLeftParenthesis, after(kOpening, kRightParenthesisToAt), kReturn);
inline constexpr auto kNumbers3 = joined(kToAlternate, kUndo, kMarks, kToAlternateRight);

inline constexpr auto kAlternate1 =
    joined(kLeftSquareBracketToNumberSign, after(kOpening, kPercentSignToEqualsSign), kDelete);
inline constexpr auto kAlternate2 =
    joined(kLowLineToLessThanSign, after(kOpening, kGreaterThanSignToYenSign), kReturn);
inline constexpr auto kAlternate3 = joined(kToNumbers, kRedo, kMarks, kToNumbersRight);

// The left space takes what the switches leave over, so that the right half stays as it is.
inline constexpr auto kSpaces =
    joined(space("Space-Key"), after(kOpening, space("Space-Key-Right", 4)));
inline constexpr auto kLettersBottom =
    joined(kToMarks, kSwitches, kSpaces, kToMarksRight, kDismiss);
inline constexpr auto kNumbersBottom =
    joined(kToLetters, kSwitches, kSpaces, kToLettersRight, kDismiss);

inline constexpr auto kSmallRows = rowsOf(kSmall1, kSmall2, kSmall3, kLettersBottom);
inline constexpr auto kCapitalRows = rowsOf(kCapital1, kCapital2, kCapital3, kLettersBottom);
inline constexpr auto kNumbersRows = rowsOf(kNumbers1, kNumbers2, kNumbers3, kNumbersBottom);
inline constexpr auto kAlternateRows =
    rowsOf(kAlternate1, kAlternate2, kAlternate3, kNumbersBottom);

inline constexpr auto kKeyplanes =
    keyplanesOf(kSmallRows, kCapitalRows, kNumbersRows, kAlternateRows);

}  // namespace tablet_split

inline constexpr Board kTabletSplit = {
    .name = "Tablet-Split",
    .is_tablet = true,
    .visual_styles = {.portrait = {.letters = 11, .numbers = 11},
                      .landscape = {.letters = 12, .numbers = 12},
                      .alert = 9},
    // Each half is as far from its faces on the inside as on the outside.
    .portrait = {.size = {768, 264},
                 .unit = 54,
                 .margin = 6,
                 .top = 8,
                 .row_pitch = 64,
                 .face_height = 55,
                 .face_gap = 6,
                 .corner_radius = 5,
                 .opening = Span{282, 432}},
    .landscape = {.size = {1024, 352},
                  .unit = 72,
                  .margin = 8,
                  .top = 9,
                  .row_pitch = 86,
                  .face_height = 75,
                  .face_gap = 8,
                  .corner_radius = 6,
                  .opening = Span{376, 576}},
    .keyplanes = tablet_split::kKeyplanes,
};

}  // namespace host::boards
