#pragma once

#include <string_view>

#include "platform/property_list.h"

namespace tools::theme {

/// Whether `images`, pictures by background key, have one for every keyplane for which `key` would
/// be tried: one under the key itself, or under another that is tried after it.
bool answerFor(platform::PropertyListView images, std::string_view key);

}  // namespace tools::theme
