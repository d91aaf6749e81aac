#pragma once

#include <string>

#include "serve/message.h"

namespace tools::serve {

/// Whether the theme at `path` can be read.
bool canBeRead(const std::string& path);

/// What a page and the server want to know of the theme at `path`, before a keyboard has it: its
/// "name", the "files" that it is made of, its "styles" with their numbers of rules, and the
/// "pictures" that it names.
Json factsOf(const std::string& path);

}  // namespace tools::serve
