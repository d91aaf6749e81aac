#pragma once

// JSON as the replay command writes it.

#include <nlohmann/json.hpp>
#include <string>

namespace tools::scenario {

/// `value` as a JSON number, without a point when it is a whole one: 320, 20.5. Null when it is not
/// finite, since JSON has no such number.
nlohmann::ordered_json number(double value);

/// `value` on one line, without spaces and without the line's end, members in the order of writing.
/// Bytes that are no UTF-8 become U+FFFD.
std::string line(const nlohmann::ordered_json& value);

/// The same for a person: cut, with "..." at the end, where it is longer than a glance.
std::string shortLine(const nlohmann::ordered_json& value);

}  // namespace tools::scenario
