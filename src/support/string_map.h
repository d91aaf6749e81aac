#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace prismal {

struct StringHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const {
    return std::hash<std::string_view>()(text);
  }
};

/// A hash table by text in which a look-up by string_view allocates nothing.
template <class Value>
using StringMap = std::unordered_map<std::string, Value, StringHash, std::equal_to<>>;

}  // namespace prismal
