#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/render/keyplane.h"
#include "styles/key_identity.h"

namespace tools::check {

/// A keyplane of a board, with every key that it has on any device.
struct Keyplane {
  host::render::KeyplaneChoice choice;
  host::render::LiveKeyplane live;
  std::string_view style;  ///< the name of its visual style
  /// The list of the theme whose rules it gets; empty: none.
  std::string list;
  /// The background keys that are asked for behind it, on all devices.
  std::set<std::string> images;
};

/// A key in a state, as far as conditions can tell it from others, under the rules of one list.
struct KeyCase {
  std::string list;
  prismal::KeyIdentity identity;
  int control_state;
  bool has_second_text;
};

/// Makes the device of this process answer for a board, on a screen of one pixel a point.
void becomeDeviceOf(const host::boards::Board& board);

/// The orientation as background keys name it.
std::string_view orientationOf(const host::render::KeyplaneChoice& choice);

/// The states that a key of `keyplane` can be in, but for being disabled, which all can.
std::vector<int> statesOf(const Keyplane& keyplane, const host::render::LiveKey& key);

/// Puts a key into a state.
void setState(const host::render::LiveKey& key, int state);

/// Every keyplane of every board, and all that conditions can meet there. The process must have a
/// keyboard. Main thread only.
class Boards {
 public:
  Boards();

  std::span<Keyplane> keyplanes() { return keyplanes_; }
  std::span<const Keyplane> keyplanes() const { return keyplanes_; }
  /// Every background key that is asked for behind keys or while dictating.
  const std::set<std::string, std::less<>>& imageKeys() const { return imageKeys_; }

  /// Asks the library which list of rules each keyplane gets, and gathers the cases.
  void findCases();
  std::span<const KeyCase> cases() const { return cases_; }
  /// Which of the cases a key of `keyplane` is in `state`.
  std::size_t caseOf(const Keyplane& keyplane, const host::render::LiveKey& key, int state) const;

 private:
  void addCase(const Keyplane& keyplane, const host::render::LiveKey& key, int state);

  std::vector<Keyplane> keyplanes_;
  std::set<std::string, std::less<>> imageKeys_;
  std::vector<KeyCase> cases_;
  std::map<std::string, std::size_t, std::less<>> numbers_;
};

}  // namespace tools::check
