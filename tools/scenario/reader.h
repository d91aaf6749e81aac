#pragma once

// From the text of a scenario file to plain values.

#include <string>
#include <string_view>
#include <variant>

#include "scenario/model.h"

namespace tools::scenario {

/// Why a text is no scenario.
struct Fault {
  std::string file;
  /// Where: a JSON pointer, or "line 3, column 14" for text that is no JSON at all. Empty for the
  /// whole document.
  std::string place;
  std::string reason;

  /// One line, such as `x.json: /steps/3/keyplane/visualStyle: expected an integer, found a
  /// string`.
  std::string message() const;
};

using ScenarioOrFault = std::variant<Scenario, Fault>;

/// The scenario that `jsonText` describes. `file` is only a name, for the message. Reads nothing
/// but the text and throws nothing but std::bad_alloc. Any thread.
ScenarioOrFault read(std::string_view file, std::string_view jsonText);

}  // namespace tools::scenario
