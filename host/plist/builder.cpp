#include "host/plist/builder.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace host::plist {

using platform::PropertyList;
using platform::PropertyListEntry;
using platform::PropertyListNode;
using platform::PropertyListView;

/// Hands out memory piece by piece, much quicker than a general allocator: a list of a theme is a
/// hundred thousand pieces.
struct Builder::Arena {
  void* allocate(std::size_t size, std::size_t alignment) {
    void* place = free;
    if (!std::align(alignment, size, place, left)) {
      left = std::max(size + alignment, chunk);
      chunk = std::min(2 * chunk, kLargestChunk);
      place = memory.allocate(left, alignof(std::max_align_t));
      std::align(alignment, size, place, left);
    }
    free = static_cast<std::byte*>(place) + size;
    left -= size;
    return place;
  }

  static constexpr std::size_t kLargestChunk = std::size_t{1} << 18U;

  std::pmr::monotonic_buffer_resource memory;
  std::byte* free = nullptr;
  std::size_t left = 0;
  std::size_t chunk = 1024;
  std::vector<PropertyList> adopted;
};

namespace {

bool keysAscend(std::span<const PropertyListEntry> entries) {
  return std::ranges::adjacent_find(entries, std::ranges::greater_equal(),
                                    &PropertyListEntry::key) == entries.end();
}

/// Sorts by key and keeps the last entry of each; returns what is left, at the front.
Entries sortKeepingLast(std::span<PropertyListEntry> entries) {
  std::ranges::stable_sort(entries, {}, &PropertyListEntry::key);
  auto end = entries.begin();
  for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
    const auto next = std::next(entry);
    if (next == entries.end() || next->key != entry->key) *end++ = *entry;
  }
  return {entries.begin(), end};
}

}  // namespace

Builder::Builder() : arena_(std::make_shared<Arena>()) {}

PropertyListView Builder::make(Value value, Position position) {
  void* place = arena_->allocate(sizeof(PropertyListNode), alignof(PropertyListNode));
  return PropertyListView(new (place) PropertyListNode{value, position});
}

template <class T>
std::span<T> Builder::copy(std::span<const T> values) {
  if (values.empty()) return {};
  void* place = arena_->allocate(values.size_bytes(), alignof(T));
  T* first = static_cast<T*>(place);
  std::uninitialized_copy(values.begin(), values.end(), first);
  return {first, values.size()};
}

PropertyListView Builder::boolean(bool value, Position position) {
  return make(value, position);
}

PropertyListView Builder::integer(std::int64_t value, Position position) {
  return make(value, position);
}

PropertyListView Builder::real(double value, Position position) {
  return make(value, position);
}

PropertyListView Builder::date(Date value, Position position) {
  return make(value, position);
}

PropertyListView Builder::string(std::string_view text, Position position) {
  return make(keep(text), position);
}

PropertyListView Builder::data(Data bytes, Position position) {
  return make(Data(copy(bytes)), position);
}

PropertyListView Builder::array(Items items, Position position) {
  return make(Items(copy(items)), position);
}

PropertyListView Builder::dictionary(std::span<const Entry> entries, Position position) {
  const std::span<Entry> kept = copy(entries);
  // Most files were written by a program that sorts.
  return make(keysAscend(kept) ? Entries(kept) : sortKeepingLast(kept), position);
}

std::string_view Builder::keep(std::string_view text) {
  // Empty texts have an address of their own, too: keys are told apart by theirs.
  constexpr std::size_t kLeast = 1;
  char* const first = static_cast<char*>(arena_->allocate(std::max(text.size(), kLeast), 1));
  std::ranges::copy(text, first);
  return {first, text.size()};
}

PropertyListView Builder::adopt(PropertyList other) {
  const PropertyListView root = other;
  arena_->adopted.push_back(std::move(other));
  return root;
}

PropertyList Builder::finish(PropertyListView root) {
  const auto arena = std::move(arena_);
  return root ? PropertyList(arena, root.get()) : PropertyList();
}

}  // namespace host::plist
