#pragma once

// The system's own look, as the names that a theme may define anew. Nothing is drawn but from a
// colour name of these tables. All answers are constant data of the program; any thread may ask.

#include <optional>
#include <span>
#include <string_view>

#include "host/drawing/plain.h"
#include "host/keyboard/boards/board.h"
#include "host/keyboard/boards/visual_style.h"

namespace host::boards {

struct NamedColor {
  std::string_view name;
  drawing::Rgba color;
};

/// A gradient by the names of its colours; flat when both are the same name.
struct NamedGradient {
  std::string_view name;
  std::string_view start;
  std::string_view end;
};

/// How the system draws a key. An empty name stands for none.
struct KeyLook {
  std::string_view gradient;
  std::string_view text_color;
  std::string_view secondary_text_color;
  std::string_view etch_color;
  std::string_view edge_color;
  std::string_view font_name;
  double font_size_pt;
  double secondary_font_size_pt;
  drawing::Point etch_offset_pt;
};

/// Every colour and every gradient, sorted by name.
std::span<const NamedColor> systemColors();
std::span<const NamedGradient> systemGradients();

/// How the name of each of the system's colours begins.
inline constexpr std::string_view kColorPrefix = "UIKBColor";

/// The colour of that name; none for a name that the system doesn't know.
std::optional<drawing::Rgba> systemColor(std::string_view name);

/// The gradient of that name; null for a name that the system doesn't know.
const NamedGradient* systemGradient(std::string_view name);

/// What the system's look of a key depends on, but for its state.
struct KeyKind {
  Role role = Role::letter;
  Lettering lettering = Lettering::character;
};

constexpr KeyKind kindOf(const Key& key) {
  return {key.role, letteringOf(key)};
}

/// How the system draws a key of `kind` in `state`; a number that is no KeyState looks normal. A
/// shift key that is on or locked looks like one whatever its role; pressed, like a pressed key.
KeyLook systemKeyLook(KeyKind kind, Look look, Family family, int state);

/// The name of the gradient behind the keys.
std::string_view systemBackgroundGradient(Look look);

/// How the system draws the dictation panel.
struct PanelLook {
  std::string_view background;  // gradients
  std::string_view done;
  std::string_view level;  // colours, from here on
  std::string_view done_edge;
  std::string_view done_text;
  std::string_view done_etch;
};

PanelLook systemPanelLook(Look look);

}  // namespace host::boards
