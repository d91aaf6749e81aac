#pragma once

#include <string_view>

#include "styles/key_identity.h"

namespace prismal {

/// Whether `condition` holds for the key: terms joined by ";", all of which must hold, each with a
/// list of values joined by ",", one of which must fit; "*" ends the condition in success. Nothing
/// is trimmed and nothing escaped. Walks the text, allocates nothing.
bool PMStyleConditionMatches(std::string_view condition, const KeyIdentity& key, int controlState);

}  // namespace prismal
