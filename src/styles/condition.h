#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "styles/key_identity.h"

namespace prismal {

/// What a term of a condition tests of a key; a term of an unknown name tests nothing.
enum class ConditionSubject : std::uint8_t {
  kNothing,
  kDisplayTypeHint,
  kDisplayType,
  kControlState,
  kRow,
  kKeyName,
};

/// A term that does not hold, a part of its condition's text.
struct FailedTerm {
  std::string_view term;
  ConditionSubject subject = ConditionSubject::kNothing;
};

/// The first term of `condition` that does not hold for the key; none when the condition holds. A
/// condition is terms joined by ";", all of which must hold, each with a list of values joined by
/// ",", one of which must fit; "*" ends the condition in success. Nothing is trimmed and nothing
/// escaped. Walks the text, allocates nothing.
std::optional<FailedTerm> PMStyleConditionFailure(std::string_view condition,
                                                  const KeyIdentity& key, int controlState);

/// Whether all terms hold.
bool PMStyleConditionMatches(std::string_view condition, const KeyIdentity& key, int controlState);

}  // namespace prismal
