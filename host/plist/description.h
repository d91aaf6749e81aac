#pragma once

// Values as a log line shows them.

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/property_list.h"

namespace host::plist {

/// `view` on one line: a string as it stands but for its control characters, numbers in their
/// shortest decimal form, booleans as 1 or 0, `<0a1b>`, `2013-09-18 00:00:00 +0000`, `(A, "#1")`,
/// `{Key = value; }`, and `(null)` for a null view. Texts inside a collection are quoted when they
/// hold more than A-Z a-z 0-9 . _ / $ : - or nothing at all. Behind kMaxDescribedBytes it is cut
/// off, and "..." says so. Any thread.
std::string describe(platform::PropertyListView view);

/// `text` with every control character (U+0000 to U+001F, U+007F to U+009F) written as `\n`, `\r`,
/// `\t` or like `\u001b`, and U+FFFD for what is no UTF-8, so that it stays one line whatever it
/// holds. Any thread.
std::string escapeControls(std::string_view text);

/// The same, cut off behind `longest` bytes of `text`, with "..." in place of the rest.
std::string inOneLine(std::string_view text, std::size_t longest);

}  // namespace host::plist
