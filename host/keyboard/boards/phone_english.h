#pragma once

// The English keyplanes of a phone: ten units wide, four rows.

#include "host/keyboard/boards/keys.h"

namespace host::boards::phone_english {

inline constexpr Key kShift =
    trimmed(0.1875, drawn("Shift-Key", Shape::shift, DisplayType::shift, 1.5));
inline constexpr Key kShiftOn =
    trimmed(0.1875, drawn("Shift-Key", Shape::shift_on, DisplayType::shift, 1.5));
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
inline constexpr Key kSpace = space("space");
inline constexpr Key kReturn = returnKey("return", 2.5);

inline constexpr Key kSmall1[] = {
    letter("Latin-Small-Letter-Q", "q"), letter("Latin-Small-Letter-W", "w"),
    letter("Latin-Small-Letter-E", "e"), letter("Latin-Small-Letter-R", "r"),
    letter("Latin-Small-Letter-T", "t"), letter("Latin-Small-Letter-Y", "y"),
    letter("Latin-Small-Letter-U", "u"), letter("Latin-Small-Letter-I", "i"),
    letter("Latin-Small-Letter-O", "o"), letter("Latin-Small-Letter-P", "p"),
};
inline constexpr Key kSmall2[] = {
    after(0.5, letter("Latin-Small-Letter-A", "a")),
    letter("Latin-Small-Letter-S", "s"),
    letter("Latin-Small-Letter-D", "d"),
    letter("Latin-Small-Letter-F", "f"),
    letter("Latin-Small-Letter-G", "g"),
    letter("Latin-Small-Letter-H", "h"),
    letter("Latin-Small-Letter-J", "j"),
    letter("Latin-Small-Letter-K", "k"),
    letter("Latin-Small-Letter-L", "l"),
};
inline constexpr Key kSmall3[] = {
    kShift,
    letter("Latin-Small-Letter-Z", "z"),
    letter("Latin-Small-Letter-X", "x"),
    letter("Latin-Small-Letter-C", "c"),
    letter("Latin-Small-Letter-V", "v"),
    letter("Latin-Small-Letter-B", "b"),
    letter("Latin-Small-Letter-N", "n"),
    letter("Latin-Small-Letter-M", "m"),
    kDelete,
};

inline constexpr Key kCapital1[] = {
    letter("Latin-Capital-Letter-Q", "Q"), letter("Latin-Capital-Letter-W", "W"),
    letter("Latin-Capital-Letter-E", "E"), letter("Latin-Capital-Letter-R", "R"),
    letter("Latin-Capital-Letter-T", "T"), letter("Latin-Capital-Letter-Y", "Y"),
    letter("Latin-Capital-Letter-U", "U"), letter("Latin-Capital-Letter-I", "I"),
    letter("Latin-Capital-Letter-O", "O"), letter("Latin-Capital-Letter-P", "P"),
};
inline constexpr Key kCapital2[] = {
    after(0.5, letter("Latin-Capital-Letter-A", "A")),
    letter("Latin-Capital-Letter-S", "S"),
    letter("Latin-Capital-Letter-D", "D"),
    letter("Latin-Capital-Letter-F", "F"),
    letter("Latin-Capital-Letter-G", "G"),
    letter("Latin-Capital-Letter-H", "H"),
    letter("Latin-Capital-Letter-J", "J"),
    letter("Latin-Capital-Letter-K", "K"),
    letter("Latin-Capital-Letter-L", "L"),
};
inline constexpr Key kCapital3[] = {
    kShiftOn,
    letter("Latin-Capital-Letter-Z", "Z"),
    letter("Latin-Capital-Letter-X", "X"),
    letter("Latin-Capital-Letter-C", "C"),
    letter("Latin-Capital-Letter-V", "V"),
    letter("Latin-Capital-Letter-B", "B"),
    letter("Latin-Capital-Letter-N", "N"),
    letter("Latin-Capital-Letter-M", "M"),
    kDelete,
};

inline constexpr Key kNumbers1[] = {
    digit("Digit-1", "1"), digit("Digit-2", "2"), digit("Digit-3", "3"), digit("Digit-4", "4"),
    digit("Digit-5", "5"), digit("Digit-6", "6"), digit("Digit-7", "7"), digit("Digit-8", "8"),
    digit("Digit-9", "9"), digit("Digit-0", "0"),
};
inline constexpr Key kNumbers2[] = {
    mark("Hyphen", "-"),
    mark("Slash", "/"),
    mark("Colon", ":"),
    mark("Semicolon", ";"),
    mark("Left-Parenthesis", "("),
    mark("Right-Parenthesis", ")"),
    mark("Dollar-Sign", "$"),
    mark("Ampersand", "&"),
    mark("Commercial-At", "@"),
    mark("Quotation-Mark", "\""),
};
// Five wide keys between the two ends, as far from them on the left as on the right.
inline constexpr Key kNumbers3[] = {
    kToAlternate,
    after(0.0625, mark("Full-Stop", ".", 1.375)),
    mark("Comma", ",", 1.375),
    mark("Question-Mark", "?", 1.375),
    mark("Exclamation-Mark", "!", 1.375),
    mark("Apostrophe", "'", 1.375),
    after(0.0625, kDelete),
};

inline constexpr Key kAlternate1[] = {
    mark("Left-Square-Bracket", "["), mark("Right-Square-Bracket", "]"),
    mark("Left-Curly-Bracket", "{"),  mark("Right-Curly-Bracket", "}"),
    mark("Number-Sign", "#"),         mark("Percent-Sign", "%"),
    mark("Circumflex-Accent", "^"),   mark("Asterisk", "*"),
    mark("Plus-Sign", "+"),           mark("Equals-Sign", "="),
};
inline constexpr Key kAlternate2[] = {
    mark("Low-Line", "_"),  mark("Backslash", "\\"),     mark("Vertical-Line", "|"),
    mark("Tilde", "~"),     mark("Less-Than-Sign", "<"), mark("Greater-Than-Sign", ">"),
    mark("Euro-Sign", "€"), mark("Pound-Sign", "£"),     mark("Yen-Sign", "¥"),
    mark("Bullet", "•"),
};
inline constexpr Key kAlternate3[] = {
    kToNumbers,
    after(0.0625, mark("Full-Stop", ".", 1.375)),
    mark("Comma", ",", 1.375),
    mark("Question-Mark", "?", 1.375),
    mark("Exclamation-Mark", "!", 1.375),
    mark("Apostrophe", "'", 1.375),
    after(0.0625, kDelete),
};

inline constexpr Key kLettersBottom[] = {
    function("More-Key", "123", DisplayType::more, 1.3125),
    kInternational,
    kDictation,
    kSpace,
    kReturn,
};
inline constexpr Key kNumbersBottom[] = {
    function("More-Key", "ABC", DisplayType::more, 1.3125),
    kInternational,
    kDictation,
    kSpace,
    kReturn,
};

inline constexpr Row kSmallRows[] = {{1, kSmall1}, {2, kSmall2}, {3, kSmall3}, {4, kLettersBottom}};
inline constexpr Row kCapitalRows[] = {
    {1, kCapital1}, {2, kCapital2}, {3, kCapital3}, {4, kLettersBottom}};
inline constexpr Row kNumbersRows[] = {
    {1, kNumbers1}, {2, kNumbers2}, {3, kNumbers3}, {4, kNumbersBottom}};
inline constexpr Row kAlternateRows[] = {
    {1, kAlternate1}, {2, kAlternate2}, {3, kAlternate3}, {4, kNumbersBottom}};

inline constexpr Keyplane kKeyplanes[] = {
    {.plane = Plane::small_letters,
     .name = "Small-Letters",
     .type = 0,
     .is_letters = true,
     .is_shift_keyplane = false,
     .on_shift = Plane::capital_letters,
     .on_more = Plane::numbers,
     .rows = kSmallRows},
    {.plane = Plane::capital_letters,
     .name = "Capital-Letters",
     .type = 0,
     .is_letters = true,
     .is_shift_keyplane = true,
     .on_shift = Plane::small_letters,
     .on_more = Plane::numbers,
     .rows = kCapitalRows},
    {.plane = Plane::numbers,
     .name = "Numbers-And-Punctuation",
     .type = 0,
     .is_letters = false,
     .is_shift_keyplane = false,
     .on_shift = Plane::numbers_alternate,
     .on_more = Plane::small_letters,
     .rows = kNumbersRows},
    {.plane = Plane::numbers_alternate,
     .name = "Numbers-And-Punctuation-Alternate",
     .type = 0,
     .is_letters = false,
     .is_shift_keyplane = true,
     .on_shift = Plane::numbers,
     .on_more = Plane::small_letters,
     .rows = kAlternateRows},
};

}  // namespace host::boards::phone_english
