#pragma once

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tools::serve::http {

/// The parameters of a target, name and value, still encoded; its views into `target`. None when
/// one has no name or no equals sign, which programs understand in several ways.
std::optional<std::vector<std::pair<std::string_view, std::string_view>>> splitQuery(
    std::string_view target);

}  // namespace tools::serve::http
