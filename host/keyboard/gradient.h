#pragma once

#include <optional>
#include <set>
#include <string>
#include <variant>

#include "host/runtime/object.h"
#include "platform/keyboard.h"

namespace host::keyboard {

struct FlatColors {
  std::string color;
};
struct LinearColors {
  std::string start;
  std::string end;
};
/// One of the platform's own; what colours it has is asked by its name when it is drawn.
struct OwnGradient {
  std::string name;
};

struct GradientObject final : objc_object {
  using Colors = std::variant<FlatColors, LinearColors, OwnGradient>;
  explicit GradientObject(Colors gradientColors);
  Colors colors;
};

/// Defines the class `UIKBGradient`.
void defineGradientClass();

/// Asks the keyboard's gradient class for the gradient of that name, as the keyboard does: through
/// its method table. Null when the host lacks the class.
platform::UIKBGradient askNamedGradient(std::string_view name);

using Names = std::set<std::string, std::less<>>;

/// The names that the platform's own `gradientWithName:` knows; none puts the system look's names
/// back.
void setSystemGradients(std::optional<Names> names);

/// Colour names of which the platform makes no gradient.
void setRejectedColors(Names names);

}  // namespace host::keyboard
