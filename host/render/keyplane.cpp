#include "host/render/keyplane.h"

#include <cstdint>

#include "host/keyboard/keyboard.h"
#include "host/keyboard/tree.h"
#include "host/runtime/object.h"
#include "host/views/view.h"

namespace host::render {

using platform::Retained;
using platform::UIKBTree;

namespace {

// The numbers by which the device tells keyplanes and orientations apart.
int visualStyle(const KeyplaneChoice& choice) {
  if (choice.look == boards::Look::alert) return 3;
  return choice.orientation == boards::Orientation::portrait ? 1 : 2;
}

std::int32_t interfaceOrientation(boards::Orientation orientation) {
  return orientation == boards::Orientation::portrait ? 1 : 3;
}

keyboard::TreeObject& objectOf(const Retained<UIKBTree>& tree) {
  return *runtime::as<keyboard::TreeObject>(tree.get());
}

Retained<UIKBTree> makeKey(const boards::PlacedKey& placed) {
  auto tree = runtime::makeRetained<UIKBTree, keyboard::TreeObject>();
  auto& object = objectOf(tree);
  object.name = placed.key->name;
  object.displayType = static_cast<int>(placed.key->display_type);
  object.displayTypeHint = static_cast<int>(placed.key->display_type_hint);
  object.displayRowHint = placed.row_hint;
  object.state = static_cast<int>(boards::KeyState::normal);
  object.role = placed.key->role;
  return tree;
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
  object.visualStyle = visualStyle(choice);
  object.type = keyplane.type;
  object.isLetters = keyplane.is_letters;
  object.isShiftKeyplane = keyplane.is_shift_keyplane;
  for (const boards::PlacedKey& placed : live.placed.keys) {
    live.keys.push_back({placed, makeKey(placed)});
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
  for (const LiveKey& key : keyplane.keys) names.append(" ").append(key.placed.key->name);
  return names;
}

bool press(LiveKeyplane& keyplane, std::string_view nameOrLabel) {
  // Keys with a drawn symbol have an empty label, which names none of them.
  if (nameOrLabel.empty()) return false;
  for (const LiveKey& key : keyplane.keys) {
    if (key.placed.key->name != nameOrLabel && key.placed.key->label != nameOrLabel) continue;
    objectOf(key.tree).state = static_cast<int>(boards::KeyState::pressed);
    return true;
  }
  return false;
}

}  // namespace host::render
