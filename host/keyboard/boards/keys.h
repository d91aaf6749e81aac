#pragma once

// Words to write rows and keyplanes with.

#include <algorithm>
#include <array>
#include <string_view>
#include <type_traits>

#include "host/keyboard/boards/board.h"

namespace host::boards {

constexpr Key letter(std::string_view name, std::string_view label) {
  return {.name = name, .label = label};
}

constexpr Key digit(std::string_view name, std::string_view label) {
  return {.name = name, .label = label, .display_type_hint = DisplayTypeHint::digit};
}

constexpr Key mark(std::string_view name, std::string_view label) {
  return {.name = name, .label = label, .display_type_hint = DisplayTypeHint::punctuation};
}

constexpr Key function(std::string_view name, std::string_view label, DisplayType type,
                       double width = 1) {
  return {
      .name = name, .label = label, .display_type = type, .role = Role::function, .width = width};
}

constexpr Key drawn(std::string_view name, Shape shape, DisplayType type, double width = 1) {
  Key key = function(name, "", type, width);
  key.shape = shape;
  return key;
}

constexpr Key space(std::string_view name, double width = kRest) {
  return {.name = name,
          .label = "space",
          .display_type = DisplayType::space,
          .role = Role::space,
          .width = width};
}

constexpr Key returnKey(double width) {
  return {.name = "Return-Key",
          .label = "return",
          .display_type = DisplayType::return_key,
          .role = Role::return_key,
          .width = width};
}

/// `key`, with `units` left empty before it.
constexpr Key after(double units, Key key) {
  key.lead = units;
  return key;
}

/// `keys`, with `units` left empty before the first.
template <std::size_t Count>
constexpr std::array<Key, Count> after(double units, std::array<Key, Count> keys) {
  keys.front().lead = units;
  return keys;
}

constexpr Key wide(double units, Key key) {
  key.width = units;
  return key;
}

constexpr Key below(std::string_view secondary_label, Key key) {
  key.secondary_label = secondary_label;
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

/// How many keys a part of a row is: a key, or an array of them.
template <typename Part>
inline constexpr std::size_t kKeysIn = 1;
template <std::size_t Count>
inline constexpr std::size_t kKeysIn<std::array<Key, Count>> = Count;

/// The keys of `parts`, each a key or an array of keys, from left to right.
template <typename... Parts>
constexpr auto joined(const Parts&... parts) {
  std::array<Key, (kKeysIn<Parts> + ...)> keys{};
  auto* end = keys.data();
  const auto append = [&end](const auto& part) {
    if constexpr (std::is_same_v<decltype(part), const Key&>) {
      *end++ = part;
    } else {
      end = std::ranges::copy(part, end).out;
    }
  };
  (append(parts), ...);
  return keys;
}

using FourRows = std::array<Row, 4>;

/// `keys`, from the top.
constexpr FourRows rowsOf(std::span<const Key> first, std::span<const Key> second,
                          std::span<const Key> third, std::span<const Key> fourth) {
  return {{{1, first}, {2, second}, {3, third}, {4, fourth}}};
}

/// The four keyplanes that a board has, with the ways between them. The rows must live as long.
constexpr std::array<Keyplane, 4> keyplanesOf(const FourRows& small, const FourRows& capital,
                                              const FourRows& numbers, const FourRows& alternate) {
  return {{
      {.plane = Plane::small_letters,
       .name = "Small-Letters",
       .is_letters = true,
       .is_shift_keyplane = false,
       .on_shift = Plane::capital_letters,
       .on_more = Plane::numbers,
       .rows = small},
      {.plane = Plane::capital_letters,
       .name = "Capital-Letters",
       .is_letters = true,
       .is_shift_keyplane = true,
       .on_shift = Plane::small_letters,
       .on_more = Plane::numbers,
       .rows = capital},
      {.plane = Plane::numbers,
       .name = "Numbers-And-Punctuation",
       .is_letters = false,
       .is_shift_keyplane = false,
       .on_shift = Plane::numbers_alternate,
       .on_more = Plane::small_letters,
       .rows = numbers},
      {.plane = Plane::numbers_alternate,
       .name = "Numbers-And-Punctuation-Alternate",
       .is_letters = false,
       .is_shift_keyplane = true,
       .on_shift = Plane::numbers,
       .on_more = Plane::small_letters,
       .rows = alternate},
  }};
}

}  // namespace host::boards
