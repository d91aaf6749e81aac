#pragma once

#include <optional>
#include <string_view>

#include "platform/keyboard.h"

namespace prismal {

/// The class of a keyplane. Themes write the numbers into the keys of background images.
enum PMKeyplaneIndex : int {
  PMKeyplaneCapitalLetters = 0,
  PMKeyplaneSmallLetters = 1,
  PMKeyplaneNumbers = 2,
  PMKeyplaneNumbersAlternate = 3,
};

/// By what the name contains, in any case; when it says nothing, by the two flags.
PMKeyplaneIndex keyplaneIndex(std::optional<std::string_view> name, bool isLetters,
                              bool isShiftKeyplane);

/// A null keyplane is one of numbers.
PMKeyplaneIndex PMGetKeyplaneIndex(platform::UIKBTree keyplane);

}  // namespace prismal
