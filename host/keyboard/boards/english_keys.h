#pragma once

// The English letters, the digits and the marks, in the stretches that boards put in a row. A board
// in two halves parts its rows where a stretch ends.

#include "host/keyboard/boards/keys.h"

namespace host::boards::english {

inline constexpr std::array kSmallQToT{
    letter("Latin-Small-Letter-Q", "q"), letter("Latin-Small-Letter-W", "w"),
    letter("Latin-Small-Letter-E", "e"), letter("Latin-Small-Letter-R", "r"),
    letter("Latin-Small-Letter-T", "t"),
};
inline constexpr std::array kSmallYToP{
    letter("Latin-Small-Letter-Y", "y"), letter("Latin-Small-Letter-U", "u"),
    letter("Latin-Small-Letter-I", "i"), letter("Latin-Small-Letter-O", "o"),
    letter("Latin-Small-Letter-P", "p"),
};
inline constexpr std::array kSmallAToG{
    letter("Latin-Small-Letter-A", "a"), letter("Latin-Small-Letter-S", "s"),
    letter("Latin-Small-Letter-D", "d"), letter("Latin-Small-Letter-F", "f"),
    letter("Latin-Small-Letter-G", "g"),
};
inline constexpr std::array kSmallHToL{
    letter("Latin-Small-Letter-H", "h"),
    letter("Latin-Small-Letter-J", "j"),
    letter("Latin-Small-Letter-K", "k"),
    letter("Latin-Small-Letter-L", "l"),
};
inline constexpr std::array kSmallZToV{
    letter("Latin-Small-Letter-Z", "z"),
    letter("Latin-Small-Letter-X", "x"),
    letter("Latin-Small-Letter-C", "c"),
    letter("Latin-Small-Letter-V", "v"),
};
inline constexpr std::array kSmallBToM{
    letter("Latin-Small-Letter-B", "b"),
    letter("Latin-Small-Letter-N", "n"),
    letter("Latin-Small-Letter-M", "m"),
};

inline constexpr std::array kCapitalQToT{
    letter("Latin-Capital-Letter-Q", "Q"), letter("Latin-Capital-Letter-W", "W"),
    letter("Latin-Capital-Letter-E", "E"), letter("Latin-Capital-Letter-R", "R"),
    letter("Latin-Capital-Letter-T", "T"),
};
inline constexpr std::array kCapitalYToP{
    letter("Latin-Capital-Letter-Y", "Y"), letter("Latin-Capital-Letter-U", "U"),
    letter("Latin-Capital-Letter-I", "I"), letter("Latin-Capital-Letter-O", "O"),
    letter("Latin-Capital-Letter-P", "P"),
};
inline constexpr std::array kCapitalAToG{
    letter("Latin-Capital-Letter-A", "A"), letter("Latin-Capital-Letter-S", "S"),
    letter("Latin-Capital-Letter-D", "D"), letter("Latin-Capital-Letter-F", "F"),
    letter("Latin-Capital-Letter-G", "G"),
};
inline constexpr std::array kCapitalHToL{
    letter("Latin-Capital-Letter-H", "H"),
    letter("Latin-Capital-Letter-J", "J"),
    letter("Latin-Capital-Letter-K", "K"),
    letter("Latin-Capital-Letter-L", "L"),
};
inline constexpr std::array kCapitalZToV{
    letter("Latin-Capital-Letter-Z", "Z"),
    letter("Latin-Capital-Letter-X", "X"),
    letter("Latin-Capital-Letter-C", "C"),
    letter("Latin-Capital-Letter-V", "V"),
};
inline constexpr std::array kCapitalBToM{
    letter("Latin-Capital-Letter-B", "B"),
    letter("Latin-Capital-Letter-N", "N"),
    letter("Latin-Capital-Letter-M", "M"),
};

inline constexpr std::array k1To5{
    digit("Digit-1", "1"), digit("Digit-2", "2"), digit("Digit-3", "3"),
    digit("Digit-4", "4"), digit("Digit-5", "5"),
};
inline constexpr std::array k6To0{
    digit("Digit-6", "6"), digit("Digit-7", "7"), digit("Digit-8", "8"),
    digit("Digit-9", "9"), digit("Digit-0", "0"),
};

// The numbers' second row; behind the last of these a phone has the quotation mark.
inline constexpr std::array kHyphenToLeftParenthesis{
    mark("Hyphen", "-"),           mark("Slash", "/"), mark("Colon", ":"), mark("Semicolon", ";"),
    mark("Left-Parenthesis", "("),
};
inline constexpr std::array kRightParenthesisToAt{
    mark("Right-Parenthesis", ")"),
    mark("Dollar-Sign", "$"),
    mark("Ampersand", "&"),
    mark("Commercial-At", "@"),
};

inline constexpr Key kFullStop = mark("Full-Stop", ".");
inline constexpr Key kComma = mark("Comma", ",");
inline constexpr Key kQuestionMark = mark("Question-Mark", "?");
inline constexpr Key kExclamationMark = mark("Exclamation-Mark", "!");
inline constexpr Key kApostrophe = mark("Apostrophe", "'");
inline constexpr Key kQuotationMark = mark("Quotation-Mark", "\"");

// The alternate keyplane; behind the last of these a phone has the bullet.
inline constexpr std::array kLeftSquareBracketToNumberSign{
    mark("Left-Square-Bracket", "["), mark("Right-Square-Bracket", "]"),
    mark("Left-Curly-Bracket", "{"),  mark("Right-Curly-Bracket", "}"),
    mark("Number-Sign", "#"),
};
inline constexpr std::array kPercentSignToEqualsSign{
    mark("Percent-Sign", "%"), mark("Circumflex-Accent", "^"), mark("Asterisk", "*"),
    mark("Plus-Sign", "+"),    mark("Equals-Sign", "="),
};
inline constexpr std::array kLowLineToLessThanSign{
    mark("Low-Line", "_"), mark("Backslash", "\\"),     mark("Vertical-Line", "|"),
    mark("Tilde", "~"),    mark("Less-Than-Sign", "<"),
};
inline constexpr std::array kGreaterThanSignToYenSign{
    mark("Greater-Than-Sign", ">"),
    mark("Euro-Sign", "€"),
    mark("Pound-Sign", "£"),
    mark("Yen-Sign", "¥"),
};
inline constexpr Key kBullet = mark("Bullet", "•");

}  // namespace host::boards::english
