#pragma once

#include "explain/explanation.h"
#include "keyboard/key_json.h"

namespace tools::explain {

/// An explanation for programs, as `explain --json` writes it.
keyboard::Json explanationJson(const Explanation& explanation);

/// A rule's condition; null where a malformed rule has none.
keyboard::Json conditionJson(platform::PropertyListView rule);

/// The line of a rule, or null.
keyboard::Json lineJson(platform::PropertyListView rule);

}  // namespace tools::explain
