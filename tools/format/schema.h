#pragma once

#include <nlohmann/json.hpp>

namespace tools::format {

/// A JSON Schema (draft 2020-12) of the JSON form of a theme, made from the format's table. It is
/// stricter than the library: what would be passed over without effect is no part of it.
nlohmann::ordered_json themeSchema();

}  // namespace tools::format
