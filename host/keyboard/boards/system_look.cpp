#include "host/keyboard/boards/system_look.h"

#include <algorithm>
#include <iterator>

#include "host/keyboard/boards/system_palette.h"

namespace host::boards {
namespace {

using palette::kColors;
using palette::kGradients;

constexpr KeyLook kBase = {.gradient = {},
                           .text_color = {},
                           .secondary_text_color = "UIKBColorTextSecondary",
                           .etch_color = "UIKBColorTextEtch",
                           .edge_color = "UIKBColorKeyEdge",
                           .font_name = "Inter-Regular",
                           .font_size_pt = 15,
                           .secondary_font_size_pt = 13,
                           .etch_offset_pt = {0, 1}};

constexpr KeyLook look(std::string_view gradient, std::string_view text_color) {
  KeyLook look = kBase;
  look.gradient = gradient;
  look.text_color = text_color;
  return look;
}

constexpr KeyLook alertLook(std::string_view gradient, std::string_view text_color) {
  KeyLook alert = look(gradient, text_color);
  alert.secondary_text_color = "UIKBColorAlertTextSecondary";
  alert.etch_color = "UIKBColorAlertTextEtch";
  alert.edge_color = "UIKBColorAlertKeyEdge";
  return alert;
}

constexpr KeyLook letters(KeyLook look) {
  look.font_name = "InterDisplay-Light";
  look.font_size_pt = 23;
  return look;
}

struct States {
  KeyLook normal;
  KeyLook pressed;
  KeyLook disabled;
};

// By look, then by role.
constexpr States kLooks[2][4] = {
    {
        {letters(look("UIKBGradientKeyLetter", "UIKBColorTextLetter")),
         letters(look("UIKBGradientKeyLetterPressed", "UIKBColorTextLetterPressed")),
         letters(look("UIKBGradientKeyLetterDisabled", "UIKBColorTextLetterDisabled"))},
        {look("UIKBGradientKeyFunction", "UIKBColorTextFunction"),
         look("UIKBGradientKeyFunctionPressed", "UIKBColorTextFunctionPressed"),
         look("UIKBGradientKeyFunctionDisabled", "UIKBColorTextFunctionDisabled")},
        {look("UIKBGradientKeySpace", "UIKBColorTextSpace"),
         look("UIKBGradientKeySpacePressed", "UIKBColorTextSpacePressed"),
         look("UIKBGradientKeySpaceDisabled", "UIKBColorTextSpaceDisabled")},
        {look("UIKBGradientKeyReturn", "UIKBColorTextReturn"),
         look("UIKBGradientKeyReturnPressed", "UIKBColorTextReturnPressed"),
         look("UIKBGradientKeyReturnDisabled", "UIKBColorTextReturnDisabled")},
    },
    {
        {letters(alertLook("UIKBGradientAlertKeyLetter", "UIKBColorAlertTextLetter")),
         letters(alertLook("UIKBGradientAlertKeyLetterPressed", "UIKBColorAlertTextLetterPressed")),
         letters(
             alertLook("UIKBGradientAlertKeyLetterDisabled", "UIKBColorAlertTextLetterDisabled"))},
        {alertLook("UIKBGradientAlertKeyFunction", "UIKBColorAlertTextFunction"),
         alertLook("UIKBGradientAlertKeyFunctionPressed", "UIKBColorAlertTextFunctionPressed"),
         alertLook("UIKBGradientAlertKeyFunctionDisabled", "UIKBColorAlertTextFunctionDisabled")},
        {alertLook("UIKBGradientAlertKeySpace", "UIKBColorAlertTextSpace"),
         alertLook("UIKBGradientAlertKeySpacePressed", "UIKBColorAlertTextSpacePressed"),
         alertLook("UIKBGradientAlertKeySpaceDisabled", "UIKBColorAlertTextSpaceDisabled")},
        {alertLook("UIKBGradientAlertKeyReturn", "UIKBColorAlertTextReturn"),
         alertLook("UIKBGradientAlertKeyReturnPressed", "UIKBColorAlertTextReturnPressed"),

         alertLook("UIKBGradientAlertKeyReturnDisabled", "UIKBColorAlertTextReturnDisabled")},
    },
};

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

constexpr bool isKnownLook(const KeyLook& look) {
  return has(kGradients, look.gradient) && isKnownColor(look.text_color) &&
         isKnownColor(look.secondary_text_color) && isKnownColor(look.etch_color) &&
         isKnownColor(look.edge_color);
}

static_assert(isSortedAndUnique(kColors));
static_assert(isSortedAndUnique(kGradients));
static_assert(std::ranges::all_of(kGradients, isKnownColor, &NamedGradient::start));
static_assert(std::ranges::all_of(kLooks, [](const auto& roles) {
  return std::ranges::all_of(roles, [](const States& states) {
    return isKnownLook(states.normal) && isKnownLook(states.pressed) &&
           isKnownLook(states.disabled);
  });
}));

}  // namespace

std::span<const NamedColor> systemColors() {
  return kColors;
}
std::span<const NamedGradient> systemGradients() {
  return kGradients;
}

std::optional<drawing::Rgba> systemColor(std::string_view name) {
  if (!has(kColors, name)) return std::nullopt;
  return firstNotBefore(kColors, name)->color;
}

const NamedGradient* systemGradient(std::string_view name) {
  return has(kGradients, name) ? firstNotBefore(kGradients, name) : nullptr;
}

KeyLook systemKeyLook(Role role, Look look, int state) {
  const States& states = kLooks[static_cast<int>(look)][static_cast<int>(role)];
  switch (static_cast<KeyState>(state)) {
    case KeyState::pressed:
      return states.pressed;
    case KeyState::disabled:
      return states.disabled;
    case KeyState::normal:
      break;
  }
  return states.normal;
}

std::string_view systemBackgroundGradient(Look look) {
  return look == Look::alert ? "UIKBGradientBackgroundAlert" : "UIKBGradientBackgroundStandard";
}

}  // namespace host::boards
