#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "explain/theme_rules.h"
#include "host/keyboard/boards/layout.h"
#include "keyboard/view.h"
#include "platform/property_list.h"

namespace tools::explain {

/// A key that a rule hits.
struct KeyHit {
  host::boards::PlacedKey placed;
  std::vector<host::boards::KeyState> states;  ///< in which it does, at least one
  bool always = false;                         ///< in all that the key can have
};

/// A keyplane on which a rule hits keys.
struct ViewHits {
  keyboard::View view;  ///< at rest
  std::vector<KeyHit> keys;
  bool everyKey = false;
};

/// Every keyplane that the options leave open, with all the keys that it can have.
std::vector<keyboard::View> searchedViews(const keyboard::ViewOptions& options);

/// Those of `views` whose keyplanes get the list that visual style `list` of `rules` has, with the
/// keys that `rule` of it hits. Any state counts that a key can be in. Main thread only, in a
/// process with a keyboard.
std::vector<ViewHits> hitsOf(platform::PropertyListView rule, std::string_view list,
                             const ThemeRules& rules, std::span<const keyboard::View> views);

/// A state for people: "pressed", "locked, pressed".
std::string_view wordOf(host::boards::KeyState state);

}  // namespace tools::explain
