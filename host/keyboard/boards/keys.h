#pragma once

// The keys that boards have in common, as words to write rows with.

#include <string_view>

#include "host/keyboard/boards/board.h"

namespace host::boards {

constexpr Key letter(std::string_view name, std::string_view label) {
  return {.name = name, .label = label};
}

constexpr Key digit(std::string_view name, std::string_view label) {
  return {.name = name, .label = label, .display_type_hint = DisplayTypeHint::digit};
}

constexpr Key mark(std::string_view name, std::string_view label, double width = 1) {
  return {.name = name,
          .label = label,
          .display_type_hint = DisplayTypeHint::punctuation,
          .width = width};
}

constexpr Key function(std::string_view name, std::string_view label, DisplayType type,
                       double width) {
  return {
      .name = name, .label = label, .display_type = type, .role = Role::function, .width = width};
}

constexpr Key drawn(std::string_view name, Shape shape, DisplayType type, double width) {
  Key key = function(name, "", type, width);
  key.shape = shape;
  return key;
}

constexpr Key space(std::string_view label) {
  return {.name = "Space-Key",
          .label = label,
          .display_type = DisplayType::space,
          .role = Role::space,
          .width = kRest};
}

constexpr Key returnKey(std::string_view label, double width) {
  return {.name = "Return-Key",
          .label = label,
          .display_type = DisplayType::return_key,
          .role = Role::return_key,
          .width = width};
}

/// `key`, with `units` left empty before it.
constexpr Key after(double units, Key key) {
  key.lead = units;
  return key;
}

/// `key`, its face leaving `units` free on the side of the board's middle.
constexpr Key trimmed(double units, Key key) {
  key.trim = units;
  return key;
}

constexpr Key only(Presence presence, Key key) {
  key.presence = presence;
  return key;
}

}  // namespace host::boards
