#pragma once

// The words of themes and settings, and of the keyboard that they dress.

#include <string_view>

namespace fuzz {

inline constexpr std::string_view kColorNames[] = {"A",
                                                   "B",
                                                   "",
                                                   "UIKBColorKeyLetter",
                                                   "UIKBColorBlack",
                                                   "UIKBColorBackgroundStandardGradientStart",
                                                   "UIKBColorBackgroundStandardGradientEnd",
                                                   "UIKBColorBackgroundAlertGradientStart",
                                                   "UIKBColorBackgroundAlertGradientEnd"};

inline constexpr std::string_view kColors[] = {"#FF0000FF", "00ff007F", " #0000ff00\n", "#FF0000",
                                               "#FF0000FF0"};

inline constexpr std::string_view kGradientNames[] = {"G", "H", "A", "", "UIKBGradientKeyLetter"};

inline constexpr std::string_view kConditions[] = {"*",
                                                   "",
                                                   "DisplayType=Letter",
                                                   "DisplayType=Sh-ift,Letter;ControlState=3",
                                                   "DisplayTypeHint=0,1",
                                                   "Row=Row1,Row2;*;nothing",
                                                   "KeyName=Latin-Small-Letter-G,Shift-Key",
                                                   "ControlState=1,2,6,7",
                                                   "ControlState= +3x",
                                                   ";"};

inline constexpr std::string_view kVisualStyles[] = {"iPhone-Standard", "iPhone-Alert",
                                                     "iPad-Standard",   "iPad-Alert",
                                                     "iPad-Split",      "iPhone-Dictation"};

inline constexpr std::string_view kStyleProperties[] = {
    "BackgroundGradient", "TransparentForeground", "TextColor",   "EtchColor",
    "SecondaryTextColor", "EtchOffsetX",           "EtchOffsetY", "FontName"};

inline constexpr std::string_view kOrientations[] = {"Portrait", "Landscape"};

inline constexpr std::string_view kImageKeys[] = {"Portrait",
                                                  "Landscape",
                                                  "Portrait;iPhone-Standard",
                                                  "Portrait;iPhone-Standard;1",
                                                  "Portrait;iPhone-Standard;1;0",
                                                  "Landscape;iPad-Standard;2;512",
                                                  "Portrait;iPhone-Dictation",
                                                  "Landscape;iPhone-Dictation",
                                                  "Portrait;iPhone-Standardly"};

inline constexpr std::string_view kPictures[] = {
    "/t/a.png", "/t/a@2x.png", "/t/b.jpg", "/t/none", "/t/../t/a.png", "/t", "", "t/a.png"};

inline constexpr std::string_view kKeyNames[] = {"Latin-Small-Letter-G", "Shift-Key", "A", ""};

inline constexpr std::string_view kKeyplaneNames[] = {"iPhone-Portrait-QWERTY_Small-Letters",
                                                      "Capital-letters",
                                                      "numbers-and-punctuation",
                                                      "Numbers-And-Punctuation-Alternate",
                                                      "x",
                                                      ""};

}  // namespace fuzz
