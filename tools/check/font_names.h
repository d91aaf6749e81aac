#pragma once

#include <string_view>

#include "check/theme.h"

namespace tools::check {

/// Tells of a font's name at `place` that is empty, or that looks like a slip in the name of an
/// installed font. Any other unknown name may be that of a font which the device has.
void checkFont(Theme& theme, const Place& place, std::string_view name);

}  // namespace tools::check
