#pragma once

// What a board is made of. Boards are constant data: every text and table lives as long as the
// program. Widths along a row are in units, so that one row serves every size of its board.

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "host/drawing/plain.h"
#include "host/keyboard/boards/display_type.h"

namespace host::boards {

/// Which of the system's looks a key wears.
enum class Role { letter, function, space, return_key };

/// What a key shows; text is its label, all others are drawn. A board says `shift` of its shift
/// keys: the two behind it are what these show in some states (key_state.h).
enum class Shape { text, shift, shift_on, shift_locked, delete_left, globe, microphone, dismiss };

/// What stands on a key, as far as its size goes: one character, two of them one above the other, a
/// word, or a drawn symbol.
enum class Lettering { character, pair, word, symbol };

/// On which devices a key is there at all.
enum class Presence { always, with_international_key, with_dictation_key };

/// The width of a key that takes all that the other keys of its row leave over.
inline constexpr double kRest = 0;

struct Key {
  std::string_view name;  // what conditions call it; unique within its keyplane
  std::string_view label;
  std::string_view secondary_label = {};  // stands above the label
  DisplayType display_type = DisplayType::letter;
  DisplayTypeHint display_type_hint = DisplayTypeHint::none;
  Role role = Role::letter;
  Shape shape = Shape::text;
  double width = 1;  // units, or kRest; at most one key of a row takes the rest
  double lead = 0;   // units left empty before the key
  double trim = 0;   // units that its face leaves free on the side of the board's middle
  Presence presence = Presence::always;
};

/// The role of keys of display type `number`; that of letters for a number that is none.
constexpr Role roleOf(int number) {
  switch (static_cast<DisplayType>(number)) {
    case DisplayType::letter:
      return Role::letter;
    case DisplayType::space:
      return Role::space;
    case DisplayType::return_key:
      return Role::return_key;
    case DisplayType::shift:
    case DisplayType::delete_left:
    case DisplayType::more:
    case DisplayType::international:
    case DisplayType::dictation:
    case DisplayType::dismiss:
    case DisplayType::undo:
    case DisplayType::redo:
      return Role::function;
  }
  return Role::letter;
}

constexpr Lettering letteringOf(const Key& key) {
  if (key.shape != Shape::text) return Lettering::symbol;
  if (key.role != Role::letter) return Lettering::word;
  return key.secondary_label.empty() ? Lettering::character : Lettering::pair;
}

struct Row {
  int hint;  // counted from the top, from 1
  std::span<const Key> keys;
};

enum class Plane { small_letters, capital_letters, numbers, numbers_alternate };

/// What every keyplane answers when it is asked for its type: the device keeps boards as trees, and
/// this is its number for a keyplane's node.
inline constexpr int kKeyplaneType = 2;

struct Keyplane {
  Plane plane;
  std::string_view name;  // ends the names of its portrait and its landscape form
  bool is_letters;
  bool is_shift_keyplane;
  Plane on_shift;  // where the shift key leads
  Plane on_more;   // where the more key leads
  std::span<const Row> rows;
};

enum class Orientation { portrait, landscape };

/// The light keyboard, and the dark one over alerts.
enum class Look { standard, alert };

/// A part of a board's width, in points from its left end.
struct Span {
  double from;
  double to;
};

/// How the rows of a board lie in one orientation, in points.
struct Metrics {
  drawing::Size size;
  double unit;       // the width of one unit
  double margin;     // left free beside the widest row, on each side
  double top;        // from the board's top to the faces of the first row
  double row_pitch;  // from one row's faces to the next row's
  double face_height;
  double face_gap;       // between neighbouring faces of a row
  double corner_radius;  // of a face
  // Where a board of two halves has neither keys nor a background: what lies below it shows.
  std::optional<Span> opening = {};
};

/// The visual styles of a board's keyplanes, the numbers by which the system tells looks apart.
struct VisualStyles {
  struct ByPlane {
    int letters;
    int numbers;
  };
  ByPlane portrait;
  ByPlane landscape;
  int alert;  // of all keyplanes over an alert

  constexpr int of(Look look, Orientation orientation, Plane plane) const {
    if (look == Look::alert) return alert;
    const ByPlane& planes = orientation == Orientation::portrait ? portrait : landscape;
    const bool is_letters = plane == Plane::small_letters || plane == Plane::capital_letters;
    return is_letters ? planes.letters : planes.numbers;
  }
};

struct Board {
  std::string_view name;  // "Phone-3.5-Inch"
  bool is_tablet;         // what the device says of itself while it shows the board
  VisualStyles visual_styles;
  Metrics portrait;
  Metrics landscape;
  std::span<const Keyplane> keyplanes;  // one of each Plane, in the order of Plane

  constexpr const Metrics& metrics(Orientation orientation) const {
    return orientation == Orientation::portrait ? portrait : landscape;
  }
  constexpr const Keyplane& keyplane(Plane plane) const {
    return keyplanes[static_cast<std::size_t>(plane)];
  }
};

/// Every board that the host knows.
std::span<const Board> allBoards();

/// The board of that name; null for a name that no board has.
const Board* findBoard(std::string_view name);

}  // namespace host::boards
