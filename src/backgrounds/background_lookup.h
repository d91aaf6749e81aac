#pragma once

#include <cstdint>
#include <string_view>

#include "backgrounds/keyplane_index.h"
#include "platform/keyboard.h"

namespace prismal {

/// The image that belongs behind the keyplane now, or null. Every answer, null ones too, stands
/// until the process ends; the library owns the image.
platform::UIImage PMGetKeyboardBackgroundImage(platform::UIKBTree keyplane,
                                               std::string_view orientation,
                                               std::string_view visualStyle, PMKeyplaneIndex index);

/// The search behind it, from the most specific key to the least. `fullKey` is made of the other
/// four.
platform::Retained<platform::UIImage> _PMGetBackgroundImage(  // NOLINT(*-reserved-identifier)
    std::string_view orientation, std::string_view visualStyle, std::string_view fullKey,
    std::uint64_t index, std::uint64_t variant);

}  // namespace prismal
