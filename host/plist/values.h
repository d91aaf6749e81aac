#pragma once

// What the tools ask of a value beyond what the keyboard needs.

#include <cstdint>
#include <optional>

#include "host/plist/node.h"

namespace host::plist {

// Each answers none for a value of any other type and for a null view. Any thread.

std::optional<bool> booleanOf(platform::PropertyListView view);
std::optional<std::int64_t> integerOf(platform::PropertyListView view);
std::optional<double> realOf(platform::PropertyListView view);
std::optional<Date> dateOf(platform::PropertyListView view);
/// The bytes live as long as the list of `view`.
std::optional<Data> dataOf(platform::PropertyListView view);

/// Where the element of `view` begins in its XML file; zero for a value that comes from elsewhere.
Position positionOf(platform::PropertyListView view);

}  // namespace host::plist
