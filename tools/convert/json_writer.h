#pragma once

#include <string>

#include "platform/property_list.h"

namespace tools::convert {

/// `root`, which must come from a reader, as JSON that readJson() reads back as the very same list:
/// what is short stands on one line, all else is indented, control characters are escaped. Ends
/// with a line's end. Any thread.
std::string writeJson(platform::PropertyListView root);

}  // namespace tools::convert
