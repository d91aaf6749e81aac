#pragma once

#include <cstddef>

#include "platform/property_list.h"

namespace fuzz {

/// Whether a list is small enough to be written out many times a second: a binary file of a few
/// hundred bytes may stand for a million values. Looks no further than it has to.
class Weight {
 public:
  static bool isLight(platform::PropertyListView list) {
    Weight weight;
    return weight.add(list);
  }

 private:
  static constexpr std::size_t kMost = 50'000;  // bytes, a value counted as some

  bool add(platform::PropertyListView value) {
    bytes_ += 16 + value.string().value_or("").size();
    if (bytes_ > kMost) return false;
    for (const auto item : value.items()) {
      if (!add(item)) return false;
    }
    for (const auto& [key, item] : value.entries()) {
      bytes_ += key.size();
      if (!add(item)) return false;
    }
    return true;
  }

  std::size_t bytes_ = 0;
};

}  // namespace fuzz
