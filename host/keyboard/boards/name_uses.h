#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host::boards {

/// Where the system's keyboard uses a colour or a gradient of that name, for people: "text of
/// return keys, pressed", "gradient UIKBGradientKeyLetter". Made from the tables that draw. Empty
/// for a name that is never asked for. Any thread.
std::vector<std::string> usesOf(std::string_view name);

}  // namespace host::boards
