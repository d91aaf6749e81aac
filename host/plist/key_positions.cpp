#include "host/plist/key_positions.h"

#include <algorithm>

namespace host::plist {

using platform::PropertyListEntry;

Position KeyPositions::of(std::string_view key) const {
  const auto found = positions_.find(key.data());
  return found == positions_.end() ? Position() : found->second;
}

void KeyPositions::add(std::string_view key, Position position) {
  positions_.emplace(key.data(), position);
}

void KeyPositions::addRepeated(Entries written, Entries kept) {
  if (written.size() == kept.size()) return;
  // Keys of a binary list may share a text, so that the last of equals is told by its turn.
  std::unordered_map<std::string_view, std::size_t> left;
  for (const PropertyListEntry& entry : written) ++left[entry.key];
  for (const PropertyListEntry& entry : written) {
    if (--left[entry.key] == 0) continue;
    const auto last = std::ranges::lower_bound(kept, entry.key, {}, &PropertyListEntry::key);
    repeated_.push_back({std::string(entry.key), of(entry.key), &*last});
  }
}

}  // namespace host::plist
