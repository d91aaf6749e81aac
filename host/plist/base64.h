#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/plist/node.h"

namespace host::plist {

/// The bytes that `text` stands for; white space may stand anywhere. None for any other foreign
/// character, missing or misplaced padding, and bits that no encoder leaves behind. Any thread.
std::optional<std::vector<std::byte>> decodeBase64(std::string_view text);

/// Appends `bytes` in base64, padded, in one line. Any thread.
void appendBase64(std::string& text, Data bytes);

}  // namespace host::plist
