#pragma once

// What names look like, asked of the keyboard as the keyboard asks itself. Main thread, inside an
// autorelease pool.

#include <optional>
#include <string_view>

#include "host/drawing/picture.h"
#include "platform/keyboard.h"

namespace host::render {

/// The colour that the keyboard knows by that name; none when it knows none, or there is no name.
std::optional<drawing::Rgba> colorNamed(std::optional<std::string_view> name);

/// The colour of text of that name. Text is drawn even when nobody knows its colour, in what a
/// fresh context has: so keys keep their labels when the master switch takes a theme's own names
/// away.
drawing::Rgba textColorNamed(std::optional<std::string_view> name);

/// What `gradient` fills with; none when no colour of it is known.
std::optional<drawing::Fill> fillOf(platform::UIKBGradient gradient);

/// The same for the keyboard's gradient of that name.
std::optional<drawing::Fill> fillNamed(std::string_view name);

}  // namespace host::render
