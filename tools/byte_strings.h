#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// Several strings of any bytes as one, on the way from one process to another.
std::string joined(const std::vector<std::string>& strings);
/// The strings again; none for bytes that are no such one.
std::optional<std::vector<std::string>> parted(std::string_view bytes);

}  // namespace tools
