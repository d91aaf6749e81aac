#include "check/boards.h"

#include <algorithm>

#include "backgrounds/keyplane_index.h"
#include "backgrounds/layout_variant.h"
#include "backgrounds/orientation.h"
#include "host/keyboard/keyboard.h"
#include "host/keyboard/tree.h"
#include "host/runtime/object.h"
#include "host/system/device.h"
#include "keyboard/view.h"
#include "styles/control_state.h"
#include "styles/style_table.h"
#include "styles/visual_style.h"

namespace tools::check {

namespace boards = host::boards;
using host::render::KeyplaneChoice;
using host::render::LiveKey;

namespace {

constexpr boards::Variant kVariants[] = {
    {.international_key = true, .dictation_key = false},
    {.international_key = true, .dictation_key = true},
    {.international_key = false, .dictation_key = false},
    {.international_key = false, .dictation_key = true},
};
/// The one that has all keys.
constexpr boards::Variant kFullest = kVariants[1];

/// The background keys that are tried behind a keyplane on devices of all variants.
std::set<std::string> imageKeysOf(const Keyplane& keyplane) {
  const auto tree = keyplane.live.tree.get();
  const std::string one(orientationOf(keyplane.choice));
  const std::string two = one + ";" + std::string(keyplane.style);
  const std::string three = two + ";" + std::to_string(prismal::PMGetKeyplaneIndex(tree));
  std::set<std::string> keys = {one, two, three};
  auto& keyboard = host::keyboard::keyboard();
  for (const boards::Variant& variant : kVariants) {
    keyboard.requiresInternationalKey = variant.international_key;
    keyboard.layoutObject().showsDictationKey = variant.dictation_key;
    for (const auto number : prismal::VariantFallbacks(prismal::PMGetLayoutVariant(tree))) {
      keys.insert(three + ";" + std::to_string(number));
    }
  }
  return keys;
}

Keyplane fullKeyplane(KeyplaneChoice choice) {
  choice.variant = kFullest;
  becomeDeviceOf(*choice.board);
  Keyplane keyplane{choice, host::render::makeKeyplane(choice), {}, {}, {}};
  keyplane.style = prismal::PMGetVisualStyleName(keyplane.live.tree.get());
  keyplane.images = imageKeysOf(keyplane);
  return keyplane;
}

std::string textOf(const std::string& list, const LiveKey& key, int state) {
  const auto tree = key.tree.get();
  const prismal::KeyIdentity identity(tree);
  std::string text = list;
  for (const std::string_view part : {identity.name().value_or(""), identity.displayType(),
                                      identity.displayTypeHint(), identity.row()}) {
    text.append("\n").append(part);
  }
  return text + "\n" + std::to_string(prismal::controlStateNumber(state));
}

}  // namespace

std::string_view orientationOf(const KeyplaneChoice& choice) {
  return prismal::orientationName(choice.orientation == boards::Orientation::portrait ? 1 : 3);
}

void becomeDeviceOf(const boards::Board& board) {
  host::system::setDevice(
      {.screenScale = 1, .interfaceIdiom = board.is_tablet ? 1 : 0, .systemVersion = "7.0.4"});
}

std::vector<int> statesOf(const Keyplane& keyplane, const LiveKey& key) {
  std::vector<int> states;
  const auto& plane = keyplane.choice.board->keyplane(keyplane.choice.plane);
  for (const auto shift : {boards::Shift::none, boards::Shift::on, boards::Shift::locked}) {
    const auto state = boards::restingState(key.placed.key->display_type, plane, shift);
    if (std::ranges::find(states, static_cast<int>(state)) != states.end()) continue;
    states.push_back(static_cast<int>(state));
    states.push_back(static_cast<int>(boards::pressedState(state)));
  }
  return states;
}

void setState(const LiveKey& key, int state) {
  host::runtime::as<host::keyboard::TreeObject>(key.tree.get())->state = state;
}

Boards::Boards() {
  for (const keyboard::View& view : keyboard::everyView({})) {
    if (view.dictation) continue;
    keyplanes_.push_back(fullKeyplane(view.keyplane));
    imageKeys_.insert(keyplanes_.back().images.begin(), keyplanes_.back().images.end());
  }
  // The panel asks for these two alone.
  for (const int orientation : {1, 3}) {
    imageKeys_.insert(std::string(prismal::orientationName(orientation)) + ";iPhone-Dictation");
  }
}

void Boards::findCases() {
  for (Keyplane& keyplane : keyplanes_) {
    becomeDeviceOf(*keyplane.choice.board);
    const auto name = prismal::PMGetVisualStyleName(keyplane.live.tree.get());
    keyplane.list = prismal::PMGetStyles(name).string().value_or("");
    for (const LiveKey& key : keyplane.live.keys) {
      addCase(keyplane, key, static_cast<int>(boards::KeyState::disabled));
      for (const int state : statesOf(keyplane, key)) addCase(keyplane, key, state);
    }
  }
}

void Boards::addCase(const Keyplane& keyplane, const LiveKey& key, int state) {
  const bool hasSecondText = !key.placed.key->secondary_label.empty();
  const auto [found, isNew] = numbers_.emplace(textOf(keyplane.list, key, state), cases_.size());
  if (!isNew) {
    // One and the same to conditions, a key may have a second text on one board and not on another.
    cases_[found->second].has_second_text |= hasSecondText;
    return;
  }
  cases_.push_back({keyplane.list, prismal::KeyIdentity(key.tree.get()),
                    prismal::controlStateNumber(state), hasSecondText});
}

std::size_t Boards::caseOf(const Keyplane& keyplane, const LiveKey& key, int state) const {
  return numbers_.find(textOf(keyplane.list, key, state))->second;
}

}  // namespace tools::check
