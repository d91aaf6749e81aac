#include "host/keyboard/boards/system_look.h"

#include <algorithm>
#include <iterator>

#include "host/keyboard/boards/key_state.h"
#include "host/keyboard/boards/system_palette.h"

namespace host::boards {
namespace {

using palette::kColors;
using palette::kGradients;

/// The names that tell a state of a role from all others.
struct StateNames {
  std::string_view gradient;
  std::string_view text_color;
};

struct RoleNames {
  StateNames normal;
  StateNames pressed;
  StateNames disabled;
};

struct LookNames {
  RoleNames roles[4];  // by Role
  StateNames shift_on;
  StateNames shift_locked;
  std::string_view secondary_text;
  std::string_view secondary_text_pressed;
  std::string_view secondary_text_disabled;
  std::string_view etch;
  std::string_view edge;
};

constexpr LookNames kStandard = {
    .roles = {{{"UIKBGradientKeyLetter", "UIKBColorTextLetter"},
               {"UIKBGradientKeyLetterPressed", "UIKBColorTextLetterPressed"},
               {"UIKBGradientKeyLetterDisabled", "UIKBColorTextLetterDisabled"}},
              {{"UIKBGradientKeyFunction", "UIKBColorTextFunction"},
               {"UIKBGradientKeyFunctionPressed", "UIKBColorTextFunctionPressed"},
               {"UIKBGradientKeyFunctionDisabled", "UIKBColorTextFunctionDisabled"}},
              {{"UIKBGradientKeySpace", "UIKBColorTextSpace"},
               {"UIKBGradientKeySpacePressed", "UIKBColorTextSpacePressed"},
               {"UIKBGradientKeySpaceDisabled", "UIKBColorTextSpaceDisabled"}},
              {{"UIKBGradientKeyReturn", "UIKBColorTextReturn"},
               {"UIKBGradientKeyReturnPressed", "UIKBColorTextReturnPressed"},
               {"UIKBGradientKeyReturnDisabled", "UIKBColorTextReturnDisabled"}}},
    .shift_on = {"UIKBGradientKeyShiftOn", "UIKBColorTextShiftOn"},
    .shift_locked = {"UIKBGradientKeyShiftLocked", "UIKBColorTextShiftLocked"},
    .secondary_text = "UIKBColorTextSecondary",
    .secondary_text_pressed = "UIKBColorTextSecondaryPressed",
    .secondary_text_disabled = "UIKBColorTextSecondaryDisabled",
    .etch = "UIKBColorTextEtch",
    .edge = "UIKBColorKeyEdge",
};

constexpr LookNames kAlert = {
    .roles = {{{"UIKBGradientAlertKeyLetter", "UIKBColorAlertTextLetter"},
               {"UIKBGradientAlertKeyLetterPressed", "UIKBColorAlertTextLetterPressed"},
               {"UIKBGradientAlertKeyLetterDisabled", "UIKBColorAlertTextLetterDisabled"}},
              {{"UIKBGradientAlertKeyFunction", "UIKBColorAlertTextFunction"},
               {"UIKBGradientAlertKeyFunctionPressed", "UIKBColorAlertTextFunctionPressed"},
               {"UIKBGradientAlertKeyFunctionDisabled", "UIKBColorAlertTextFunctionDisabled"}},
              {{"UIKBGradientAlertKeySpace", "UIKBColorAlertTextSpace"},
               {"UIKBGradientAlertKeySpacePressed", "UIKBColorAlertTextSpacePressed"},
               {"UIKBGradientAlertKeySpaceDisabled", "UIKBColorAlertTextSpaceDisabled"}},
              {{"UIKBGradientAlertKeyReturn", "UIKBColorAlertTextReturn"},
               {"UIKBGradientAlertKeyReturnPressed", "UIKBColorAlertTextReturnPressed"},
               {"UIKBGradientAlertKeyReturnDisabled", "UIKBColorAlertTextReturnDisabled"}}},
    .shift_on = {"UIKBGradientAlertKeyShiftOn", "UIKBColorAlertTextShiftOn"},
    .shift_locked = {"UIKBGradientAlertKeyShiftLocked", "UIKBColorAlertTextShiftLocked"},
    .secondary_text = "UIKBColorAlertTextSecondary",
    .secondary_text_pressed = "UIKBColorAlertTextSecondaryPressed",
    .secondary_text_disabled = "UIKBColorAlertTextSecondaryDisabled",
    .etch = "UIKBColorAlertTextEtch",
    .edge = "UIKBColorAlertKeyEdge",
};

// By look.
constexpr PanelLook kPanels[] = {
    {.background = "UIKBGradientDictationBackground",
     .done = "UIKBGradientDictationDone",
     .level = "UIKBColorDictationLevel",
     .done_edge = kStandard.edge,
     .done_text = "UIKBColorTextDictationDone",
     .done_etch = kStandard.etch},
    {.background = "UIKBGradientAlertDictationBackground",
     .done = "UIKBGradientAlertDictationDone",
     .level = "UIKBColorAlertDictationLevel",
     .done_edge = kAlert.edge,
     .done_text = "UIKBColorAlertTextDictationDone",
     .done_etch = kAlert.etch},
};

struct Font {
  std::string_view name;
  double size_pt;
  double secondary_size_pt;
};

// By family, then by lettering.
constexpr Font kFonts[2][4] = {
    {{"InterDisplay-Light", 23, 13},
     {"InterDisplay-Light", 18, 18},
     {"Inter-Regular", 15, 13},
     {"Inter-Regular", 15, 13}},
    {{"InterDisplay-Light", 27, 17},
     {"InterDisplay-Light", 23, 23},
     {"Inter-Regular", 17, 15},
     {"Inter-Regular", 19, 15}},
};

const LookNames& namesOf(Look look) {
  return look == Look::alert ? kAlert : kStandard;
}

const StateNames& stateNames(const LookNames& look, Role role, KeyState state) {
  const RoleNames& names = look.roles[static_cast<int>(role)];
  switch (state) {
    case KeyState::pressed:
    case KeyState::shift_on_pressed:
    case KeyState::shift_locked_pressed:
      return names.pressed;
    case KeyState::disabled:
      return names.disabled;
    case KeyState::shift_on:
      return look.shift_on;
    case KeyState::shift_locked:
      return look.shift_locked;
    case KeyState::normal:
      break;
  }
  return names.normal;
}

std::string_view secondaryTextColor(const LookNames& look, KeyState state) {
  if (state == KeyState::pressed) return look.secondary_text_pressed;
  return state == KeyState::disabled ? look.secondary_text_disabled : look.secondary_text;
}

template <typename Table>
constexpr auto firstNotBefore(const Table& table, std::string_view name) {
  return std::ranges::lower_bound(table, name, {}, [](const auto& entry) { return entry.name; });
}

template <typename Table>
constexpr bool has(const Table& table, std::string_view name) {
  const auto found = firstNotBefore(table, name);
  return found != std::end(table) && found->name == name;
}

template <typename Table>
constexpr bool isSortedAndUnique(const Table& table) {
  return std::ranges::adjacent_find(table, std::ranges::greater_equal{}, [](const auto& entry) {
           return entry.name;
         }) == std::end(table);
}

constexpr bool isKnownColor(std::string_view name) {
  return has(kColors, name);
}

constexpr bool isKnown(const StateNames& names) {
  return has(kGradients, names.gradient) && isKnownColor(names.text_color);
}

constexpr bool isKnown(const LookNames& look) {
  return isKnown(look.shift_on) && isKnown(look.shift_locked) &&
         isKnownColor(look.secondary_text) && isKnownColor(look.secondary_text_pressed) &&
         isKnownColor(look.secondary_text_disabled) && isKnownColor(look.etch) &&
         isKnownColor(look.edge) && std::ranges::all_of(look.roles, [](const RoleNames& role) {
           return isKnown(role.normal) && isKnown(role.pressed) && isKnown(role.disabled);
         });
}

constexpr bool isKnownPanel(const PanelLook& panel) {
  return has(kGradients, panel.background) && has(kGradients, panel.done) &&
         isKnownColor(panel.level) && isKnownColor(panel.done_edge) &&
         isKnownColor(panel.done_text) && isKnownColor(panel.done_etch);
}

static_assert(std::ranges::all_of(kPanels, isKnownPanel));
static_assert(isSortedAndUnique(kColors));
static_assert(std::ranges::all_of(kColors, [](const NamedColor& color) {
  return color.name.starts_with(kColorPrefix);
}));
static_assert(isSortedAndUnique(kGradients));
static_assert(std::ranges::all_of(kGradients, isKnownColor, &NamedGradient::start));
static_assert(std::ranges::all_of(kGradients, isKnownColor, &NamedGradient::end));
static_assert(isKnown(kStandard) && isKnown(kAlert));

}  // namespace

std::span<const NamedColor> systemColors() {
  return kColors;
}
std::span<const NamedGradient> systemGradients() {
  return kGradients;
}

std::optional<drawing::Rgba> systemColor(std::string_view name) {
  // Names of a theme's own are told at once.
  if (!name.starts_with(kColorPrefix)) return std::nullopt;
  const auto* const found = firstNotBefore(kColors, name);
  if (found == std::end(kColors) || found->name != name) return std::nullopt;
  return found->color;
}

const NamedGradient* systemGradient(std::string_view name) {
  return has(kGradients, name) ? firstNotBefore(kGradients, name) : nullptr;
}

KeyLook systemKeyLook(KeyKind kind, Look look, Family family, int state) {
  const LookNames& names = namesOf(look);
  const auto known = static_cast<KeyState>(state);
  const auto& [gradient, text_color] = stateNames(names, kind.role, known);
  const Font& font = kFonts[static_cast<int>(family)][static_cast<int>(kind.lettering)];
  return {.gradient = gradient,
          .text_color = text_color,
          .secondary_text_color = secondaryTextColor(names, known),
          .etch_color = names.etch,
          .edge_color = names.edge,
          .font_name = font.name,
          .font_size_pt = font.size_pt,
          .secondary_font_size_pt = font.secondary_size_pt,
          .etch_offset_pt = {0, 1}};
}

PanelLook systemPanelLook(Look look) {
  return kPanels[static_cast<int>(look)];
}

std::string_view systemBackgroundGradient(Look look) {
  return look == Look::alert ? "UIKBGradientBackgroundAlert" : "UIKBGradientBackgroundStandard";
}

}  // namespace host::boards
