#pragma once

#include <string_view>

#include "host/plist/reader.h"

namespace tools::convert {

/// Reads a property list written as JSON, within the limits of host/plist/limits.h. Numbers without
/// point and exponent are integers, all others reals; objects are as json_notation.h says. What a
/// list can't hold is refused: null, numbers out of range, a member twice in one object. A reason
/// names the place as that of XML does. Any thread; throws nothing but std::bad_alloc.
host::plist::Reading readJson(std::string_view text);

}  // namespace tools::convert
