#pragma once

// Who answers when the keyboard asks for a name. Main thread, while the host's trace records; it
// is emptied.

#include <optional>
#include <string_view>

#include "host/drawing/picture.h"
#include "platform/keyboard.h"

namespace tools::explain {

enum class Answerer { kNobody, kSystem, kTheme };

struct ColorAnswer {
  std::optional<host::drawing::Rgba> color;
  Answerer from = Answerer::kNobody;
};

ColorAnswer askColor(std::string_view name);

struct FillAnswer {
  /// None when no colour of the gradient is known.
  std::optional<host::drawing::Fill> fill;
  /// The theme where any name on the way to the colours is the theme's.
  Answerer from = Answerer::kNobody;
};

/// What a gradient, which may be null, fills with.
FillAnswer askFill(platform::UIKBGradient gradient);

}  // namespace tools::explain
