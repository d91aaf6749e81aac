#pragma once

#include <map>
#include <optional>
#include <string>

#include "host/keyboard/boards/system_look.h"
#include "host/runtime/object.h"
#include "platform/keyboard.h"

namespace host::keyboard {

/// A keyplane or a key. What the one kind has, the other leaves as it is here.
struct TreeObject final : objc_object {
  TreeObject();

  std::optional<std::string> name;

  // Of a keyplane.
  int visualStyle = 0;
  int type = 0;
  bool isLetters = false;
  bool isShiftKeyplane = false;

  // Of a key.
  int displayType = 0;
  int displayTypeHint = 0;
  int displayRowHint = 0;
  int state = 0;
  /// None: what keys of its role have by themselves.
  std::optional<boards::Lettering> lettering;
};

/// The names that `enumStringForDisplayType` returns for some numbers in place of the system's own.
void setDisplayTypeNames(std::map<int, std::string> names);

}  // namespace host::keyboard
