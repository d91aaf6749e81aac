#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/runtime/trace.h"
#include "platform/keyboard.h"

namespace tools::explain {

/// One background key that was tried.
struct BackgroundTry {
  std::string key;
  std::optional<std::string> path;  ///< what the theme or the settings have under the key
  std::string file;                 ///< what was read of it, maybe the sharper sibling
  bool hit = false;
  std::string reason;  ///< why a path was no hit
};

/// The keys that were tried for the picture behind `keyplane`, which is shown, up to the one that
/// gave it: `events` is what the library asked of the platform to show it, `shown` the device path
/// of the picture. Needs readyLinkedLibrary.
std::vector<BackgroundTry> backgroundChain(platform::UIKBTree keyplane,
                                           std::span<const host::runtime::Event> events,
                                           const std::optional<std::string>& shown);

}  // namespace tools::explain
