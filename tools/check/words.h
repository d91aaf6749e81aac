#pragma once

// How findings speak of what a theme holds.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "check/finding.h"
#include "host/plist/description.h"
#include "host/plist/node.h"
#include "platform/property_list.h"

namespace tools::check {

using host::plist::inOneLine;

/// `text` in quotes, on one line, not too long to be read.
std::string inQuotes(std::string_view text);

/// How many characters `text` has.
std::uint32_t charactersOf(std::string_view text);

/// "a string", "an array".
std::string_view typeOf(platform::PropertyListView value);

/// "1 error", "2 errors": the plural is the singular and `ending`.
std::string counted(std::size_t count, std::string_view singular, std::string_view ending = "s");

/// "a, b and c"; of more than four, the first three and how many more.
std::string listed(std::span<const std::string> things);

/// "line 12", or the path where there is no line.
std::string whereIs(const Place& place);

}  // namespace tools::check
