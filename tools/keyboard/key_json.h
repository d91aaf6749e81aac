#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "host/render/keyplane.h"
#include "keyboard/view.h"

namespace tools::keyboard {

using Json = nlohmann::ordered_json;

/// What a key is called, all that a condition can test of it, and the frame in which a touch is
/// its, in points.
Json keyJson(const host::render::LiveKey& key);

/// What a keyplane is called and by what numbers the device knows it: the members "device" to
/// "type" of a report.
Json keyplaneJson(const View& view, const host::render::LiveKeyplane& keyplane);

/// An object as text for people and programs: a member a line, and of its member "keys" a key a
/// line. Text that is no UTF-8 is made it.
std::string inLines(const Json& object);

}  // namespace tools::keyboard
