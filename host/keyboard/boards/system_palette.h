#pragma once

// The names and colours of the system's look, for system_look.cpp alone. Sorted by name.

#include <cstdint>
#include <string_view>

#include "host/keyboard/boards/system_look.h"

namespace host::boards::palette {

constexpr drawing::Rgba rgba(std::uint32_t hex) {
  const auto component = [hex](int shift) {
    return static_cast<double>(hex >> shift & 0xff) / 255;
  };
  return {component(24), component(16), component(8), component(0)};
}

inline constexpr NamedColor kColors[] = {
    {"UIKBColorAlertDictationBackground", rgba(0x2e2f33ff)},
    {"UIKBColorAlertDictationDone", rgba(0xffffff24)},
    {"UIKBColorAlertDictationLevel", rgba(0xffffffff)},
    {"UIKBColorAlertKeyEdge", rgba(0x0000008c)},
    {"UIKBColorAlertKeyFunction", rgba(0xffffff24)},
    {"UIKBColorAlertKeyFunctionDisabled", rgba(0xffffff17)},
    {"UIKBColorAlertKeyFunctionPressed", rgba(0xffffff4d)},
    {"UIKBColorAlertKeyLetter", rgba(0xffffff4d)},
    {"UIKBColorAlertKeyLetterDisabled", rgba(0xffffff26)},
    {"UIKBColorAlertKeyLetterPressed", rgba(0xffffff24)},
    {"UIKBColorAlertKeyReturn", rgba(0xffffff24)},
    {"UIKBColorAlertKeyReturnDisabled", rgba(0xffffff17)},
    {"UIKBColorAlertKeyReturnPressed", rgba(0xffffff4d)},
    {"UIKBColorAlertKeyShiftLocked", rgba(0xffffffd9)},
    {"UIKBColorAlertKeyShiftOn", rgba(0xffffffd9)},
    {"UIKBColorAlertKeySpace", rgba(0xffffff4d)},
    {"UIKBColorAlertKeySpaceDisabled", rgba(0xffffff26)},
    {"UIKBColorAlertKeySpacePressed", rgba(0xffffff24)},
    {"UIKBColorAlertTextDictationDone", rgba(0xffffffff)},
    {"UIKBColorAlertTextEtch", rgba(0x00000000)},
    {"UIKBColorAlertTextFunction", rgba(0xffffffff)},
    {"UIKBColorAlertTextFunctionDisabled", rgba(0xffffff59)},
    {"UIKBColorAlertTextFunctionPressed", rgba(0xffffffff)},
    {"UIKBColorAlertTextLetter", rgba(0xffffffff)},
    {"UIKBColorAlertTextLetterDisabled", rgba(0xffffff59)},
    {"UIKBColorAlertTextLetterPressed", rgba(0xffffffff)},
    {"UIKBColorAlertTextReturn", rgba(0xffffffff)},
    {"UIKBColorAlertTextReturnDisabled", rgba(0xffffff59)},
    {"UIKBColorAlertTextReturnPressed", rgba(0xffffffff)},
    {"UIKBColorAlertTextSecondary", rgba(0xffffffff)},
    {"UIKBColorAlertTextSecondaryDisabled", rgba(0xffffff59)},
    {"UIKBColorAlertTextSecondaryPressed", rgba(0xffffffff)},
    {"UIKBColorAlertTextShiftLocked", rgba(0x000000ff)},
    {"UIKBColorAlertTextShiftOn", rgba(0x000000ff)},
    {"UIKBColorAlertTextSpace", rgba(0xffffffff)},
    {"UIKBColorAlertTextSpaceDisabled", rgba(0xffffff59)},
    {"UIKBColorAlertTextSpacePressed", rgba(0xffffffff)},
    {"UIKBColorBackgroundAlert", rgba(0x2e2f33ff)},
    {"UIKBColorBackgroundAlertGradientEnd", rgba(0x2e2f33ff)},
    {"UIKBColorBackgroundAlertGradientStart", rgba(0x2e2f33ff)},
    {"UIKBColorBackgroundStandard", rgba(0xd1d5dbff)},
    {"UIKBColorBackgroundStandardGradientEnd", rgba(0xd1d5dbff)},
    {"UIKBColorBackgroundStandardGradientStart", rgba(0xd1d5dbff)},
    {"UIKBColorDictationBackground", rgba(0xd1d5dbff)},
    {"UIKBColorDictationDone", rgba(0xaeb4beff)},
    {"UIKBColorDictationLevel", rgba(0x007affff)},
    {"UIKBColorKeyEdge", rgba(0x888b91ff)},
    {"UIKBColorKeyFunction", rgba(0xaeb4beff)},
    {"UIKBColorKeyFunctionDisabled", rgba(0xbfc4ccff)},
    {"UIKBColorKeyFunctionPressed", rgba(0xfdfdfeff)},
    {"UIKBColorKeyLetter", rgba(0xfdfdfeff)},
    {"UIKBColorKeyLetterDisabled", rgba(0xe9ebeeff)},
    {"UIKBColorKeyLetterPressed", rgba(0xc4c9d1ff)},
    {"UIKBColorKeyReturn", rgba(0xaeb4beff)},
    {"UIKBColorKeyReturnDisabled", rgba(0xbfc4ccff)},
    {"UIKBColorKeyReturnPressed", rgba(0xfdfdfeff)},
    {"UIKBColorKeyShiftLocked", rgba(0xfdfdfeff)},
    {"UIKBColorKeyShiftOn", rgba(0xfdfdfeff)},
    {"UIKBColorKeySpace", rgba(0xfdfdfeff)},
    {"UIKBColorKeySpaceDisabled", rgba(0xe9ebeeff)},
    {"UIKBColorKeySpacePressed", rgba(0xaeb4beff)},
    {"UIKBColorTextDictationDone", rgba(0x000000ff)},
    {"UIKBColorTextEtch", rgba(0xffffff00)},
    {"UIKBColorTextFunction", rgba(0x000000ff)},
    {"UIKBColorTextFunctionDisabled", rgba(0x00000059)},
    {"UIKBColorTextFunctionPressed", rgba(0x000000ff)},
    {"UIKBColorTextLetter", rgba(0x000000ff)},
    {"UIKBColorTextLetterDisabled", rgba(0x00000059)},
    {"UIKBColorTextLetterPressed", rgba(0x000000ff)},
    {"UIKBColorTextReturn", rgba(0x000000ff)},
    {"UIKBColorTextReturnDisabled", rgba(0x00000059)},
    {"UIKBColorTextReturnPressed", rgba(0x000000ff)},
    {"UIKBColorTextSecondary", rgba(0x000000ff)},
    {"UIKBColorTextSecondaryDisabled", rgba(0x00000059)},
    {"UIKBColorTextSecondaryPressed", rgba(0x000000ff)},
    {"UIKBColorTextShiftLocked", rgba(0x000000ff)},
    {"UIKBColorTextShiftOn", rgba(0x000000ff)},
    {"UIKBColorTextSpace", rgba(0x000000ff)},
    {"UIKBColorTextSpaceDisabled", rgba(0x00000059)},
    {"UIKBColorTextSpacePressed", rgba(0x000000ff)},
};

constexpr NamedGradient flat(std::string_view name, std::string_view color) {
  return {name, color, color};
}

// The pair of names under which a theme may define a gradient behind the keys counts only when it
// is whole, so the system's own background goes by a name of its own.
inline constexpr NamedGradient kGradients[] = {
    flat("UIKBGradientAlertDictationBackground", "UIKBColorAlertDictationBackground"),
    flat("UIKBGradientAlertDictationDone", "UIKBColorAlertDictationDone"),
    flat("UIKBGradientAlertKeyFunction", "UIKBColorAlertKeyFunction"),
    flat("UIKBGradientAlertKeyFunctionDisabled", "UIKBColorAlertKeyFunctionDisabled"),
    flat("UIKBGradientAlertKeyFunctionPressed", "UIKBColorAlertKeyFunctionPressed"),
    flat("UIKBGradientAlertKeyLetter", "UIKBColorAlertKeyLetter"),
    flat("UIKBGradientAlertKeyLetterDisabled", "UIKBColorAlertKeyLetterDisabled"),
    flat("UIKBGradientAlertKeyLetterPressed", "UIKBColorAlertKeyLetterPressed"),
    flat("UIKBGradientAlertKeyReturn", "UIKBColorAlertKeyReturn"),
    flat("UIKBGradientAlertKeyReturnDisabled", "UIKBColorAlertKeyReturnDisabled"),
    flat("UIKBGradientAlertKeyReturnPressed", "UIKBColorAlertKeyReturnPressed"),
    flat("UIKBGradientAlertKeyShiftLocked", "UIKBColorAlertKeyShiftLocked"),
    flat("UIKBGradientAlertKeyShiftOn", "UIKBColorAlertKeyShiftOn"),
    flat("UIKBGradientAlertKeySpace", "UIKBColorAlertKeySpace"),
    flat("UIKBGradientAlertKeySpaceDisabled", "UIKBColorAlertKeySpaceDisabled"),
    flat("UIKBGradientAlertKeySpacePressed", "UIKBColorAlertKeySpacePressed"),
    flat("UIKBGradientBackgroundAlert", "UIKBColorBackgroundAlert"),
    flat("UIKBGradientBackgroundStandard", "UIKBColorBackgroundStandard"),
    flat("UIKBGradientDictationBackground", "UIKBColorDictationBackground"),
    flat("UIKBGradientDictationDone", "UIKBColorDictationDone"),
    flat("UIKBGradientKeyFunction", "UIKBColorKeyFunction"),
    flat("UIKBGradientKeyFunctionDisabled", "UIKBColorKeyFunctionDisabled"),
    flat("UIKBGradientKeyFunctionPressed", "UIKBColorKeyFunctionPressed"),
    flat("UIKBGradientKeyLetter", "UIKBColorKeyLetter"),
    flat("UIKBGradientKeyLetterDisabled", "UIKBColorKeyLetterDisabled"),
    flat("UIKBGradientKeyLetterPressed", "UIKBColorKeyLetterPressed"),
    flat("UIKBGradientKeyReturn", "UIKBColorKeyReturn"),
    flat("UIKBGradientKeyReturnDisabled", "UIKBColorKeyReturnDisabled"),
    flat("UIKBGradientKeyReturnPressed", "UIKBColorKeyReturnPressed"),
    flat("UIKBGradientKeyShiftLocked", "UIKBColorKeyShiftLocked"),
    flat("UIKBGradientKeyShiftOn", "UIKBColorKeyShiftOn"),
    flat("UIKBGradientKeySpace", "UIKBColorKeySpace"),
    flat("UIKBGradientKeySpaceDisabled", "UIKBColorKeySpaceDisabled"),
    flat("UIKBGradientKeySpacePressed", "UIKBColorKeySpacePressed"),
};

}  // namespace host::boards::palette
