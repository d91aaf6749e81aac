#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/plist/node.h"

namespace tools::convert {

/// The moment that a text like 2013-09-18T00:00:00Z or 2013-09-18T00:00:00.25Z names, to the
/// nearest that a binary property list can hold; none for any other text. Any thread.
std::optional<host::plist::Date> exactDate(std::string_view text);

/// Appends `date`, which comes from a property list or exactDate(), with the fewest digits of its
/// second's fraction that exactDate() reads back as the very same; without a point when it has
/// none.
void appendExactDate(std::string& text, host::plist::Date date);

}  // namespace tools::convert
