#pragma once

// What holds of every board, for the compiler to check.

#include <algorithm>

#include "host/keyboard/boards/board.h"

namespace host::boards {

/// The units that `row` takes with every key of it there, but for the key that takes the rest.
constexpr double fullWidth(const Row& row) {
  double units = 0;
  for (const Key& key : row.keys) units += key.lead + key.width;
  return units;
}

constexpr bool takesRest(const Row& row) {
  return std::ranges::count(row.keys, kRest, &Key::width) == 1;
}

/// Whether `row` fills a board of `units` with every key of it there, and the key that takes the
/// rest is still wide enough to be one.
constexpr bool fits(const Row& row, double units) {
  constexpr double kLeastRest = 2;
  return takesRest(row) ? fullWidth(row) + kLeastRest <= units : fullWidth(row) <= units;
}

/// How many keys of `rows` have `name`.
constexpr std::ptrdiff_t keysNamed(std::string_view name, std::span<const Row> rows) {
  std::ptrdiff_t count = 0;
  for (const Row& row : rows) count += std::ranges::count(row.keys, name, &Key::name);
  return count;
}

/// Conditions tell the keys of a keyplane apart by name alone. A key is counted in its own row and
/// those below: compilers give up on tables of twice the work.
constexpr bool namesAreUnique(const Keyplane& keyplane) {
  for (std::size_t i = 0; i < keyplane.rows.size(); ++i) {
    for (const Key& key : keyplane.rows[i].keys) {
      if (key.name.empty() || keysNamed(key.name, keyplane.rows.subspan(i)) != 1) return false;
    }
  }
  return true;
}

/// A key shows a label or a drawn symbol, never both, and a symbol that is no other key's in a
/// state.
constexpr bool showsSomething(const Key& key) {
  if (key.shape == Shape::shift_on || key.shape == Shape::shift_locked) return false;
  return (key.shape == Shape::text) != key.label.empty();
}

constexpr bool everyKeyShowsSomething(const Keyplane& keyplane) {
  return std::ranges::all_of(
      keyplane.rows, [](const Row& row) { return std::ranges::all_of(row.keys, showsSomething); });
}

constexpr bool rowsAreCounted(const Keyplane& keyplane) {
  int expected = 0;
  return std::ranges::all_of(keyplane.rows, [&](const Row& row) { return row.hint == ++expected; });
}

constexpr bool liesWithin(const std::optional<Span>& opening, double width) {
  return !opening || (0 < opening->from && opening->from < opening->to && opening->to < width);
}

constexpr bool metricsHold(const Metrics& metrics, const Keyplane& keyplane) {
  const double units = (metrics.size.width - 2 * metrics.margin) / metrics.unit;
  const double rows = static_cast<double>(keyplane.rows.size());
  return metrics.face_height < metrics.row_pitch && metrics.face_gap < metrics.unit &&
         liesWithin(metrics.opening, metrics.size.width) &&
         // The last row keeps room below it for the edge of its keys.
         metrics.top + (rows - 1) * metrics.row_pitch + metrics.face_height + 1 <=
             metrics.size.height &&
         std::ranges::all_of(keyplane.rows, [&](const Row& row) { return fits(row, units); });
}

/// Whether some keyplane of `board` is of `visual_style`.
constexpr bool shows(const Board& board, int visual_style) {
  const VisualStyles& styles = board.visual_styles;
  const auto has = [&](const VisualStyles::ByPlane& planes) {
    return planes.letters == visual_style || planes.numbers == visual_style;
  };
  return has(styles.portrait) || has(styles.landscape) || styles.alert == visual_style;
}

/// Whoever knows a key by what it answers, its display type, knows its role too.
constexpr bool rolesFollowTypes(const Keyplane& keyplane) {
  return std::ranges::all_of(keyplane.rows, [](const Row& row) {
    return std::ranges::all_of(row.keys, [](const Key& key) {
      return key.role == roleOf(static_cast<int>(key.display_type));
    });
  });
}

constexpr bool isSound(const Board& board) {
  int expected = 0;
  return !board.name.empty() && board.keyplanes.size() == 4 &&
         std::ranges::all_of(board.keyplanes, [&](const Keyplane& keyplane) {
           return static_cast<int>(keyplane.plane) == expected++ && namesAreUnique(keyplane) &&
                  everyKeyShowsSomething(keyplane) && rowsAreCounted(keyplane) &&
                  rolesFollowTypes(keyplane) && metricsHold(board.portrait, keyplane) &&
                  metricsHold(board.landscape, keyplane);
         });
}

}  // namespace host::boards
