#include "host/plist/key_positions.h"

#include <algorithm>

namespace host::plist {

using platform::PropertyListEntry;

Position KeyPositions::of(std::string_view key) const {
  const auto found = positions_.find(key.data());
  return found == positions_.end() ? Position() : found->second;
}

void KeyPositions::add(std::string_view key, Position position) {
  if (!key.empty()) positions_.emplace(key.data(), position);
}

void KeyPositions::addRepeated(Entries written, Entries kept) {
  if (written.size() == kept.size()) return;
  for (const PropertyListEntry& entry : written) {
    const auto last = std::ranges::lower_bound(kept, entry.key, {}, &PropertyListEntry::key);
    if (last->key.data() == entry.key.data()) continue;
    repeated_.push_back({std::string(entry.key), of(entry.key), of(last->key)});
  }
}

}  // namespace host::plist
