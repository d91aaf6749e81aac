#pragma once

#include <string_view>

namespace host::system {

/// Posts `name` on the default centre: what is observed on the main queue runs when the run loop
/// comes round.
void postNotification(std::string_view name);

}  // namespace host::system
