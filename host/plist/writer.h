#pragma once

// Writing property lists. Any thread; nothing but std::bad_alloc is thrown, and no bytes come of a
// null view. Text that is no UTF-8 is written with U+FFFD for what is wrong with it.

#include <string>

#include "platform/property_list.h"

namespace host::plist {

/// The XML form, indented, one value a line. It holds no fractions of a second, which are dropped,
/// and no control characters but tab and line breaks, which become U+FFFD.
std::string writeXml(platform::PropertyListView root);

/// The binary form. Shared values stay shared, and equal texts become so.
std::string writeBinary(platform::PropertyListView root);

}  // namespace host::plist
