#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/keyboard/boards/key_state.h"
#include "host/keyboard/boards/layout.h"
#include "platform/keyboard.h"

namespace host::render {

/// Which keyplane is shown, and how.
struct KeyplaneChoice {
  const boards::Board* board = nullptr;
  boards::Plane plane = boards::Plane::small_letters;
  boards::Orientation orientation = boards::Orientation::portrait;
  boards::Look look = boards::Look::standard;
  boards::Variant variant;
  /// What the shift keys of a letters keyplane say; none: as that keyplane has it by itself.
  std::optional<boards::Shift> shift = {};
};

struct LiveKey {
  boards::PlacedKey placed;
  platform::Retained<platform::UIKBTree> tree;
};

/// A keyplane of a board with the objects by which the keyboard knows it.
struct LiveKeyplane {
  boards::PlacedKeyplane placed;
  double cornerRadius_pt = 0;
  platform::Retained<platform::UIKBTree> tree;
  std::vector<LiveKey> keys;
};

LiveKeyplane makeKeyplane(const KeyplaneChoice& choice);

/// Makes the keyboard of this process show `keyplane`: turned the way it is, with a background view
/// of its size.
void show(const LiveKeyplane& keyplane, const KeyplaneChoice& choice);

/// What its keys are called, each behind a space, for messages: labels, and names where the key
/// shows a symbol.
std::string keyNames(const LiveKeyplane& keyplane);

/// The keys that have this name or label; when there is none, those that have it in other letter
/// case, so that "g" is found among capitals too. They belong to `keyplane`.
std::vector<const LiveKey*> keysCalled(const LiveKeyplane& keyplane, std::string_view nameOrLabel);

// Both functions act on `keysCalled`, and are false when there is none.

/// Presses keys. One that is disabled stays so.
bool press(const LiveKeyplane& keyplane, std::string_view nameOrLabel);

/// Disables keys, pressed or not.
bool disable(const LiveKeyplane& keyplane, std::string_view nameOrLabel);

}  // namespace host::render
