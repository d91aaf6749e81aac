#pragma once

// What a board is made of. Boards are constant data: every text and table lives as long as the
// program. Widths along a row are in units, so that one row serves every size of its board.

#include <cstddef>
#include <span>
#include <string_view>

#include "host/drawing/plain.h"
#include "host/keyboard/boards/display_type.h"

namespace host::boards {

/// Which of the system's looks a key wears.
enum class Role { letter, function, space, return_key };

/// What a key shows; text is its label, all others are drawn.
enum class Shape { text, shift, shift_on, delete_left, globe, microphone, dismiss };

/// On which devices a key is there at all.
enum class Presence { always, with_international_key, with_dictation_key };

/// A key's frame takes all that the other keys of its row leave over.
inline constexpr double kRest = 0;

struct Key {
  std::string_view name;  // what conditions call it; unique within its keyplane
  std::string_view label;
  std::string_view secondary_label = {};
  DisplayType display_type = DisplayType::letter;
  DisplayTypeHint display_type_hint = DisplayTypeHint::none;
  Role role = Role::letter;
  Shape shape = Shape::text;
  double width = 1;  // units, or kRest; at most one key of a row takes the rest
  double lead = 0;   // units left empty before the key
  double trim = 0;   // units that its face leaves free on the side of the board's middle
  Presence presence = Presence::always;
};

struct Row {
  int hint;  // counted from the top, from 1
  std::span<const Key> keys;
};

enum class Plane { small_letters, capital_letters, numbers, numbers_alternate };

struct Keyplane {
  Plane plane;
  std::string_view name;  // ends the names of its portrait and its landscape form
  int type;
  bool is_letters;
  bool is_shift_keyplane;
  Plane on_shift;  // where the shift key leads
  Plane on_more;   // where the more key leads
  std::span<const Row> rows;
};

enum class Orientation { portrait, landscape };

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
};

struct Board {
  std::string_view name;  // "Phone-3.5-Inch"
  bool is_tablet;
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
