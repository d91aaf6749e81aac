#pragma once

#include <cstdint>
#include <memory>
#include <memory_resource>
#include <span>
#include <string_view>

#include "host/plist/node.h"
#include "platform/property_list.h"

namespace host::plist {

/// Makes the values of one property list, leaves first. What it hands out lives until the builder
/// goes or, once finished, as long as the finished list. `position` is where the value stands in
/// its file, if anywhere. Text is UTF-8. One thread at a time; throws nothing but std::bad_alloc.
class Builder {
 public:
  using View = platform::PropertyListView;
  using Entry = platform::PropertyListEntry;

  Builder();

  View boolean(bool value, Position position = {});
  View integer(std::int64_t value, Position position = {});
  /// `value` must be finite, or no reader will accept what the writers make of it.
  View real(double value, Position position = {});
  /// `value` must lie in the years 1 to 9999.
  View date(Date value, Position position = {});
  /// Copies `text`.
  View string(std::string_view text, Position position = {});
  /// Copies `bytes`.
  View data(Data bytes, Position position = {});
  /// The values must be of this list, or live as long; none may be null.
  View array(Items items, Position position = {});
  /// The entries in any order; of two under the same key the last stays. Their values are as for
  /// array(). Copies the entries but not the text of their keys, which must be kept (below) or a
  /// literal.
  View dictionary(std::span<const Entry> entries, Position position = {});

  /// A copy of `text` that lives as long as the list: a key for dictionary().
  std::string_view keep(std::string_view text);
  /// A value of another list for use in this one, which then keeps the other alive.
  View adopt(platform::PropertyList other);

  /// The list whose root is `root`, one of the values made here; null when that is null. The
  /// builder is spent.
  platform::PropertyList finish(View root);

 private:
  struct Arena;

  View make(Value value, Position position);
  template <class T>
  std::span<T> copy(std::span<const T> values);

  std::shared_ptr<Arena> arena_;
};

}  // namespace host::plist
