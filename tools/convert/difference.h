#pragma once

#include <optional>
#include <string>

#include "platform/property_list.h"

namespace tools::convert {

/// A place at which two lists are not the same.
struct Difference {
  std::string place;                 ///< a JSON pointer
  platform::PropertyListView value;  ///< the first list's, there
};

/// The first place, keys sorted, at which the lists differ in type, number of entries, a key, or a
/// value, to the last bit; none when they are the same. Both come from readers. Any thread.
std::optional<Difference> firstDifference(platform::PropertyListView one,
                                          platform::PropertyListView other);

}  // namespace tools::convert
