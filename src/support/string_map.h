#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <random>
#include <string_view>
#include <utility>
#include <vector>

#include "support/text_hash.h"

namespace prismal {

/// What this process hashes names with. They come from strangers, who must not be able to make many
/// of one hash.
inline std::uint64_t processSeed() {
  static const std::uint64_t seed = [] {
    std::random_device random;
    return std::uint64_t{random()} << 32U | random();
  }();
  return seed;
}

/// A hash table by text from which nothing is taken. A look-up allocates nothing and touches two
/// places of memory: a slot, and the one text whose hash fits. Values move when the table grows.
template <class Value>
class StringMap {
 public:
  bool empty() const { return size_ == 0; }
  std::size_t size() const { return size_; }

  /// Makes room for so many texts.
  void reserve(std::size_t count) {
    const std::size_t slots = slotsFor(count);
    if (slots > slots_.size()) rehash(slots);
  }

  /// The value under `text`, until the next insertion; null when there is none.
  const Value* find(std::string_view text) const {
    const std::size_t slot = slotOf(text);
    return slot == kNone ? nullptr : &slots_[slot].value;
  }

  /// Adds a value under `text`, unless there is one; the one that is there then.
  const Value& insert(std::string_view text, Value value) {
    const std::size_t slot = slotOf(text);
    return slot == kNone ? add(text, std::move(value)) : slots_[slot].value;
  }

  /// Adds a value under `text`, in place of one that may be there.
  void assign(std::string_view text, Value value) {
    const std::size_t slot = slotOf(text);
    if (slot == kNone) {
      add(text, std::move(value));
    } else {
      slots_[slot].value = std::move(value);
    }
  }

 private:
  static constexpr std::uint32_t kFree = 0;
  static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

  struct Slot {
    std::uint32_t tag = kFree;  // of the hash, the bits that do not choose the slot
    std::uint32_t text = 0;     // where the text lies
    Value value{};
  };

  /// Slots for `count` texts: no more than five eighths are ever taken, or runs get long.
  static std::size_t slotsFor(std::size_t count) {
    return std::bit_ceil(std::max<std::size_t>(8, count + count * 3 / 5 + 1));
  }

  static std::uint32_t tagOf(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash >> 32U) | 1U;
  }

  std::size_t mask() const { return slots_.size() - 1; }

  /// The number of the slot that holds `text`; kNone when none does.
  std::size_t slotOf(std::string_view text) const {
    if (slots_.empty()) return kNone;
    const std::uint64_t hash = hash_(text);
    const std::uint32_t tag = tagOf(hash);
    for (std::size_t i = hash & mask();; i = (i + 1) & mask()) {
      const Slot& slot = slots_[i];
      if (slot.tag == tag && textAt(slot.text) == text) return i;
      if (slot.tag == kFree) return kNone;
    }
  }

  std::string_view textAt(std::uint32_t place) const {
    std::uint32_t length = 0;
    std::memcpy(&length, &texts_[place], sizeof length);
    return {&texts_[place] + sizeof length, length};
  }

  /// Copies the text behind those that are there and answers its place.
  std::uint32_t keep(std::string_view text) {
    if (text.size() >
        std::numeric_limits<std::uint32_t>::max() - sizeof(std::uint32_t) - texts_.size()) {
      throw std::bad_alloc();
    }
    const auto place = static_cast<std::uint32_t>(texts_.size());
    const auto length = static_cast<std::uint32_t>(text.size());
    const auto* const bytes = reinterpret_cast<const char*>(&length);
    texts_.insert(texts_.end(), bytes, bytes + sizeof length);
    texts_.insert(texts_.end(), text.begin(), text.end());
    return place;
  }

  Slot& freeSlot(std::uint64_t hash) {
    std::size_t i = hash & mask();
    while (slots_[i].tag != kFree) i = (i + 1) & mask();
    return slots_[i];
  }

  const Value& add(std::string_view text, Value value) {
    reserve(size_ + 1);
    const std::uint32_t place = keep(text);
    const std::uint64_t hash = hash_(text);
    Slot& slot = freeSlot(hash);
    slot = {tagOf(hash), place, std::move(value)};
    ++size_;
    return slot.value;
  }

  void rehash(std::size_t count) {
    std::vector<Slot> old(count);
    old.swap(slots_);
    for (Slot& slot : old) {
      if (slot.tag != kFree) freeSlot(hash_(textAt(slot.text))) = std::move(slot);
    }
  }

  TextHash hash_{processSeed()};
  std::vector<Slot> slots_;
  std::vector<char> texts_;  // each behind its length
  std::size_t size_ = 0;
};

}  // namespace prismal
