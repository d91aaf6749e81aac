#include "host/render/keyplane.h"

#include <algorithm>
#include <cstdint>

#include "host/keyboard/keyboard.h"
#include "host/keyboard/tree.h"
#include "host/runtime/object.h"
#include "host/views/view.h"

namespace host::render {

using platform::Retained;
using platform::UIKBTree;

namespace {

std::int32_t interfaceOrientation(boards::Orientation orientation) {
  return orientation == boards::Orientation::portrait ? 1 : 3;
}

keyboard::TreeObject& objectOf(const Retained<UIKBTree>& tree) {
  return *runtime::as<keyboard::TreeObject>(tree.get());
}

Retained<UIKBTree> makeKey(const boards::PlacedKey& placed, boards::KeyState state) {
  auto tree = runtime::makeRetained<UIKBTree, keyboard::TreeObject>();
  auto& object = objectOf(tree);
  object.name = placed.key->name;
  object.displayType = static_cast<int>(placed.key->display_type);
  object.displayTypeHint = static_cast<int>(placed.key->display_type_hint);
  object.displayRowHint = placed.row_hint;
  object.state = static_cast<int>(state);
  object.lettering = boards::letteringOf(*placed.key);
  return tree;
}

char lowered(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A'))
                                              : character;
}

bool isSame(std::string_view one, std::string_view other) {
  return one == other;
}

bool isSameInAnyCase(std::string_view one, std::string_view other) {
  return std::ranges::equal(one, other, {}, lowered, lowered);
}

std::vector<const LiveKey*> keysCalled(const LiveKeyplane& keyplane, std::string_view nameOrLabel,
                                       bool (*isAlike)(std::string_view, std::string_view)) {
  std::vector<const LiveKey*> keys;
  // Keys with a drawn symbol have an empty label, which names none of them.
  if (nameOrLabel.empty()) return keys;
  for (const LiveKey& key : keyplane.keys) {
    const boards::Key& described = *key.placed.key;
    if (isAlike(described.name, nameOrLabel) || isAlike(described.label, nameOrLabel)) {
      keys.push_back(&key);
    }
  }
  return keys;
}

/// Puts every key that is called so into the state that `next` makes of its own.
template <typename Next>
bool change(const LiveKeyplane& keyplane, std::string_view nameOrLabel, Next next) {
  const auto keys = keysCalled(keyplane, nameOrLabel);
  for (const LiveKey* key : keys) {
    int& state = objectOf(key->tree).state;
    state = static_cast<int>(next(static_cast<boards::KeyState>(state)));
  }
  return !keys.empty();
}

}  // namespace

LiveKeyplane makeKeyplane(const KeyplaneChoice& choice) {
  LiveKeyplane live;
  live.placed = boards::place(*choice.board, choice.plane, choice.orientation, choice.variant);
  live.cornerRadius_pt = choice.board->metrics(choice.orientation).corner_radius;
  live.tree = runtime::makeRetained<UIKBTree, keyboard::TreeObject>();
  const boards::Keyplane& keyplane = choice.board->keyplane(choice.plane);
  auto& object = objectOf(live.tree);
  object.name = live.placed.name;
  object.visualStyle =
      choice.board->visual_styles.of(choice.look, choice.orientation, choice.plane);
  object.type = boards::kKeyplaneType;
  object.isLetters = keyplane.is_letters;
  object.isShiftKeyplane = keyplane.is_shift_keyplane;
  const boards::Shift shift = choice.shift.value_or(boards::defaultShift(choice.plane));
  for (const boards::PlacedKey& placed : live.placed.keys) {
    const auto state = boards::restingState(placed.key->display_type, keyplane, shift);
    live.keys.push_back({placed, makeKey(placed, state)});
  }
  return live;
}

void show(const LiveKeyplane& keyplane, const KeyplaneChoice& choice) {
  auto& keyboard = keyboard::keyboard();
  keyboard.inputObject().orientation = interfaceOrientation(choice.orientation);
  keyboard.requiresInternationalKey = choice.variant.international_key;
  keyboard.layoutObject().showsDictationKey = choice.variant.dictation_key;

  const auto view = runtime::makeRetained<platform::UIView, views::ViewObject>(views::viewClass());
  view->setFrame({0, 0, keyplane.placed.size.width, keyplane.placed.size.height});
  keyboard.layoutObject().backgroundView.set(view.get());
  keyboard::showKeyboard(keyboard.layout.get(), keyplane.tree.get());
}

std::string keyNames(const LiveKeyplane& keyplane) {
  std::string names;
  for (const LiveKey& key : keyplane.keys) {
    const boards::Key& described = *key.placed.key;
    names.append(" ").append(described.label.empty() ? described.name : described.label);
  }
  return names;
}

std::vector<const LiveKey*> keysCalled(const LiveKeyplane& keyplane, std::string_view nameOrLabel) {
  auto keys = keysCalled(keyplane, nameOrLabel, isSame);
  return keys.empty() ? keysCalled(keyplane, nameOrLabel, isSameInAnyCase) : keys;
}

bool press(const LiveKeyplane& keyplane, std::string_view nameOrLabel) {
  return change(keyplane, nameOrLabel, boards::pressedState);
}

bool disable(const LiveKeyplane& keyplane, std::string_view nameOrLabel) {
  return change(keyplane, nameOrLabel, [](boards::KeyState) { return boards::KeyState::disabled; });
}

}  // namespace host::render
