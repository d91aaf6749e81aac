#pragma once

// The English keyplanes of a phone: ten units wide, four rows.

#include "host/keyboard/boards/english_keys.h"
#include "host/keyboard/boards/keys.h"

namespace host::boards::phone_english {

using namespace english;

inline constexpr Key kShift =
    trimmed(0.1875, drawn("Shift-Key", Shape::shift, DisplayType::shift, 1.5));
inline constexpr Key kToAlternate =
    trimmed(0.1875, function("Shift-Key", "#+=", DisplayType::shift, 1.5));
inline constexpr Key kToNumbers =
    trimmed(0.1875, function("Shift-Key", "123", DisplayType::shift, 1.5));
inline constexpr Key kDelete =
    trimmed(0.1875, drawn("Delete-Key", Shape::delete_left, DisplayType::delete_left, 1.5));
inline constexpr Key kInternational =
    only(Presence::with_international_key,
         drawn("International-Key", Shape::globe, DisplayType::international, 1.25));
inline constexpr Key kDictation =
    only(Presence::with_dictation_key,
         drawn("Dictation-Key", Shape::microphone, DisplayType::dictation, 1.25));

inline constexpr auto kSmall1 = joined(kSmallQToT, kSmallYToP);
inline constexpr auto kSmall2 = joined(after(0.5, kSmallAToG), kSmallHToL);
inline constexpr auto kSmall3 = joined(kShift, kSmallZToV, kSmallBToM, kDelete);

inline constexpr auto kCapital1 = joined(kCapitalQToT, kCapitalYToP);
inline constexpr auto kCapital2 = joined(after(0.5, kCapitalAToG), kCapitalHToL);
inline constexpr auto kCapital3 = joined(kShift, kCapitalZToV, kCapitalBToM, kDelete);

// Five wide keys between the two ends, as far from them on the left as on the right.
inline constexpr auto kMarks =
    joined(after(0.0625, wide(1.375, kFullStop)), wide(1.375, kComma), wide(1.375, kQuestionMark),
           wide(1.375, kExclamationMark), wide(1.375, kApostrophe), after(0.0625, kDelete));

inline constexpr auto kNumbers1 = joined(k1To5, k6To0);
inline constexpr auto kNumbers2 =
    joined(kHyphenToLeftParenthesis, kRightParenthesisToAt, kQuotationMark);
inline constexpr auto kNumbers3 = joined(kToAlternate, kMarks);

inline constexpr auto kAlternate1 =
    joined(kLeftSquareBracketToNumberSign, kPercentSignToEqualsSign);
inline constexpr auto kAlternate2 =
    joined(kLowLineToLessThanSign, kGreaterThanSignToYenSign, kBullet);
inline constexpr auto kAlternate3 = joined(kToNumbers, kMarks);

inline constexpr auto kBottomEnd =
    joined(kInternational, kDictation, space("Space-Key"), returnKey(2.5));
inline constexpr auto kLettersBottom =
    joined(function("More-Key", "123", DisplayType::more, 1.3125), kBottomEnd);
inline constexpr auto kNumbersBottom =
    joined(function("More-Key", "ABC", DisplayType::more, 1.3125), kBottomEnd);

inline constexpr auto kSmallRows = rowsOf(kSmall1, kSmall2, kSmall3, kLettersBottom);
inline constexpr auto kCapitalRows = rowsOf(kCapital1, kCapital2, kCapital3, kLettersBottom);
inline constexpr auto kNumbersRows = rowsOf(kNumbers1, kNumbers2, kNumbers3, kNumbersBottom);
inline constexpr auto kAlternateRows =
    rowsOf(kAlternate1, kAlternate2, kAlternate3, kNumbersBottom);

inline constexpr auto kKeyplanes =
    keyplanesOf(kSmallRows, kCapitalRows, kNumbersRows, kAlternateRows);

}  // namespace host::boards::phone_english
