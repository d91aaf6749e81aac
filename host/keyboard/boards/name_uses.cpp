#include "host/keyboard/boards/name_uses.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <set>

#include "host/keyboard/boards/key_state.h"
#include "host/keyboard/boards/system_look.h"

namespace host::boards {
namespace {

template <class Value>
struct Word {
  Value value;
  std::string_view word;
};

constexpr Word<Role> kRoles[] = {{Role::letter, "letter"},
                                 {Role::function, "function"},
                                 {Role::space, "space"},
                                 {Role::return_key, "return"}};

constexpr Word<KeyState> kStates[] = {
    {KeyState::normal, ""},
    {KeyState::pressed, "pressed"},
    {KeyState::disabled, "disabled"},
    {KeyState::shift_on, "on"},
    {KeyState::shift_locked, "locked"},
};

constexpr Word<Look> kLooks[] = {{Look::standard, ""}, {Look::alert, "alert"}};

constexpr Word<std::string_view KeyLook::*> kParts[] = {
    {&KeyLook::gradient, "face"},
    {&KeyLook::text_color, "text"},
    {&KeyLook::secondary_text_color, "second text"},
    {&KeyLook::etch_color, "etch"},
    {&KeyLook::edge_color, "lower edge"},
};

constexpr Word<std::string_view PanelLook::*> kPanelParts[] = {
    {&PanelLook::background, "background"},
    {&PanelLook::level, "bars"},
    {&PanelLook::done, "face of the Done key"},
    {&PanelLook::done_text, "text of the Done key"},
    {&PanelLook::done_etch, "etch of the Done key"},
    {&PanelLook::done_edge, "lower edge of the Done key"},
};

bool onlyShift(KeyState state) {
  return state == KeyState::shift_on || state == KeyState::shift_locked;
}

/// The keys and states in which one part of a key has the name.
struct Occurrences {
  std::set<std::string_view> roles;
  std::set<std::string_view> states;
};

Occurrences occurrences(std::string_view name, Look look, std::string_view KeyLook::*part) {
  Occurrences found;
  for (const auto& role : kRoles) {
    for (const auto& state : kStates) {
      if (onlyShift(state.value) && role.value != Role::function) continue;
      const KeyLook key =
          systemKeyLook({.role = role.value}, look, Family::phone, static_cast<int>(state.value));
      if (key.*part != name) continue;
      found.roles.insert(role.word);
      found.states.insert(state.word);
    }
  }
  return found;
}

std::string joined(const std::set<std::string_view>& words) {
  std::string text;
  for (const auto word : words) {
    if (!text.empty()) text += ", ";
    text += word;
  }
  return text;
}

void append(std::string& text, std::string_view more) {
  if (!more.empty()) text.append(", ").append(more);
}

std::string keysOf(const Occurrences& found) {
  if (found.roles.size() == std::size(kRoles)) return "all keys";
  const auto isShift = [](std::string_view state) { return state == "on" || state == "locked"; };
  if (std::ranges::all_of(found.states, isShift)) return "the shift key";
  return joined(found.roles) + " keys";
}

/// "text of letter keys, pressed, alert".
std::string describe(const Occurrences& found, std::string_view part, std::string_view look) {
  std::string text = std::string(part) + " of " + keysOf(found);
  // Whatever a key's state, when it has the name at rest and otherwise.
  if (!found.states.contains("")) append(text, joined(found.states));
  append(text, look);
  return text;
}

void addKeys(std::string_view name, std::vector<std::string>& uses) {
  for (const auto& look : kLooks) {
    for (const auto& part : kParts) {
      const Occurrences found = occurrences(name, look.value, part.value);
      if (!found.roles.empty()) uses.push_back(describe(found, part.word, look.word));
    }
  }
}

void addBackgrounds(std::string_view name, std::vector<std::string>& uses) {
  for (const auto& look : kLooks) {
    const auto add = [&, &look = look](std::string use) {
      append(use, look.word);
      uses.push_back(std::move(use));
    };
    if (systemBackgroundGradient(look.value) == name) add("behind the keys");
    const PanelLook panel = systemPanelLook(look.value);
    for (const auto& part : kPanelParts) {
      if (panel.*part.value == name) add(std::string(part.word) + " while dictating");
    }
  }
}

void addGradients(std::string_view name, std::vector<std::string>& uses) {
  for (const NamedGradient& gradient : systemGradients()) {
    if (gradient.start == name || gradient.end == name) {
      uses.push_back("gradient " + std::string(gradient.name));
    }
  }
}

}  // namespace

std::vector<std::string> usesOf(std::string_view name) {
  std::vector<std::string> uses;
  addGradients(name, uses);
  addKeys(name, uses);
  addBackgrounds(name, uses);
  return uses;
}

}  // namespace host::boards
