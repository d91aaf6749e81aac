#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "explain/named_answers.h"
#include "explain/rule_outcomes.h"
#include "keyboard/key_json.h"
#include "platform/keyboard.h"

namespace tools::explain {

/// One property of a key's traits, under its name in the theme format.
// NOLINTNEXTLINE(bugprone-exception-escape): moving JSON allocates nothing
struct TraitProperty {
  std::string_view property;
  keyboard::Json value;  ///< as TRAITS have it; whether the background was taken away
  keyboard::Json color;  ///< "#RRGGBBAA", two of them for a gradient that isn't flat, or null
  Answerer colorFrom = Answerer::kNobody;
  bool namesColor = false;          ///< whether `value` stands for a colour
  std::optional<std::size_t> rule;  ///< none: the system's
};

/// Every property of `traits`, which may be null, in the order of the format. Main thread, while
/// the host's trace records.
std::vector<TraitProperty> propertiesOf(platform::UIKBRenderTraits traits,
                                        const RuleOutcomes& outcomes);

/// The colours of a fill as a theme writes them.
keyboard::Json colorsOf(const std::optional<host::drawing::Fill>& fill);

}  // namespace tools::explain
