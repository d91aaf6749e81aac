#include "explain/rule_hits.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "host/keyboard/tree.h"
#include "host/render/keyplane.h"
#include "host/runtime/object.h"
#include "keyboard/shown_view.h"
#include "platform/foundation.h"
#include "styles/control_state.h"
#include "styles/style_matching.h"
#include "styles/visual_style.h"

namespace tools::explain {

namespace boards = host::boards;
using boards::KeyState;
using boards::Shift;
using keyboard::View;
using platform::PropertyListView;

namespace {

/// Every state that a key of `type` can have on `plane`: at rest, pressed, disabled.
std::vector<KeyState> statesOf(boards::DisplayType type, const boards::Keyplane& plane) {
  std::vector<KeyState> states;
  const auto add = [&](KeyState state) {
    if (std::ranges::find(states, state) == states.end()) states.push_back(state);
  };
  for (const Shift shift : {Shift::none, Shift::on, Shift::locked}) {
    const KeyState resting = boards::restingState(type, plane, shift);
    add(resting);
    add(boards::pressedState(resting));
  }
  add(KeyState::disabled);
  return states;
}

bool applies(PropertyListView rule, platform::UIKBTree key) {
  const auto verdict =
      prismal::PMJudgeRule(rule, prismal::KeyIdentity(key), prismal::PMGetControlState(key));
  return static_cast<bool>(verdict.style);
}

/// None when the rule hits the key in no state.
std::optional<KeyHit> hitOf(PropertyListView rule, const host::render::LiveKey& key,
                            const boards::Keyplane& plane) {
  KeyHit hit{.placed = key.placed, .states = {}};
  auto& tree = *host::runtime::as<host::keyboard::TreeObject>(key.tree.get());
  const auto states = statesOf(key.placed.key->display_type, plane);
  for (const KeyState state : states) {
    tree.state = static_cast<int>(state);
    if (applies(rule, key.tree.get())) hit.states.push_back(state);
  }
  if (hit.states.empty()) return std::nullopt;
  hit.always = hit.states.size() == states.size();
  return hit;
}

ViewHits hitsOn(const View& view, const host::render::LiveKeyplane& keyplane,
                PropertyListView rule) {
  ViewHits hits{.view = view, .keys = {}};
  const auto& plane = view.keyplane.board->keyplane(view.keyplane.plane);
  for (const auto& key : keyplane.keys) {
    if (auto hit = hitOf(rule, key, plane)) hits.keys.push_back(*std::move(hit));
  }
  hits.everyKey = hits.keys.size() == keyplane.keys.size();
  return hits;
}

struct StateWord {
  KeyState state;
  std::string_view word;
};

constexpr StateWord kStateWords[] = {
    {KeyState::normal, "at rest"},
    {KeyState::pressed, "pressed"},
    {KeyState::disabled, "disabled"},
    {KeyState::shift_on, "on"},
    {KeyState::shift_on_pressed, "on and pressed"},
    {KeyState::shift_locked, "locked"},
    {KeyState::shift_locked_pressed, "locked and pressed"},
};

}  // namespace

std::vector<View> searchedViews(const keyboard::ViewOptions& options) {
  std::vector<View> views = keyboard::everyView(options);
  std::erase_if(views, [](const View& view) { return view.dictation; });
  for (View& view : views) {
    view.keyplane.variant = {.international_key = true, .dictation_key = true};
  }
  return views;
}

std::vector<ViewHits> hitsOf(PropertyListView rule, std::string_view list, const ThemeRules& rules,
                             std::span<const View> views) {
  const platform::NSAutoreleasePool pool;
  std::vector<ViewHits> all;
  for (const View& view : views) {
    // A keyplane's visual style may be for the device to say.
    keyboard::become(*view.keyplane.board, 1);
    const auto keyplane = host::render::makeKeyplane(view.keyplane);
    const auto style = prismal::PMGetVisualStyleName(keyplane.tree.get());
    if (rules.listFor(style).name != list) continue;
    ViewHits hits = hitsOn(view, keyplane, rule);
    if (!hits.keys.empty()) all.push_back(std::move(hits));
  }
  return all;
}

std::string_view wordOf(KeyState state) {
  return std::ranges::find(kStateWords, state, &StateWord::state)->word;
}

}  // namespace tools::explain
