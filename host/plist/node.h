#pragma once

// How a value of a property list lies in memory.
//
//  1. All values of one list, their texts and their tables lie in one arena, which the list owns.
//     Nothing in a node needs destroying, so letting go of a list never walks it.
//  2. Nodes do not change once made, and one node may stand in several places of its list.
//  3. A node from an XML file knows where its element begins; others have no place.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>
#include <variant>

#include "platform/property_list.h"

namespace host::plist {

/// A moment, in seconds since the start of 1970, UTC.
struct Date {
  double seconds = 0;
};

using Data = std::span<const std::byte>;
using Items = std::span<const platform::PropertyListView>;
/// Sorted by the bytes of the keys, each key once.
using Entries = std::span<const platform::PropertyListEntry>;

/// A place in a text, both counted from 1 and columns in characters; zero: no place.
struct Position {
  std::uint32_t line = 0;
  std::uint32_t column = 0;
  friend bool operator==(Position, Position) = default;
};

/// The alternatives stand in the order of PropertyListView::Type, which their index therefore is.
using Value = std::variant<std::monostate, bool, std::int64_t, double, std::string_view, Date, Data,
                           Items, Entries>;

}  // namespace host::plist

namespace platform {

struct PropertyListNode {
  host::plist::Value value;
  host::plist::Position position;
};

}  // namespace platform

namespace host::plist {

static_assert(std::is_trivially_destructible_v<platform::PropertyListNode>);

template <platform::PropertyListView::Type type>
using Payload = std::variant_alternative_t<static_cast<std::size_t>(type), Value>;

static_assert(
    std::is_same_v<Payload<platform::PropertyListView::Type::kNone>, std::monostate> &&
    std::is_same_v<Payload<platform::PropertyListView::Type::kBoolean>, bool> &&
    std::is_same_v<Payload<platform::PropertyListView::Type::kInteger>, std::int64_t> &&
    std::is_same_v<Payload<platform::PropertyListView::Type::kReal>, double> &&
    std::is_same_v<Payload<platform::PropertyListView::Type::kString>, std::string_view> &&
    std::is_same_v<Payload<platform::PropertyListView::Type::kDate>, Date> &&
    std::is_same_v<Payload<platform::PropertyListView::Type::kData>, Data> &&
    std::is_same_v<Payload<platform::PropertyListView::Type::kArray>, Items> &&
    std::is_same_v<Payload<platform::PropertyListView::Type::kDictionary>, Entries>);

/// What `view` holds when it holds a T, one of the alternatives of Value; null otherwise.
template <class T>
const T* payload(platform::PropertyListView view) {
  return view ? std::get_if<T>(&view.get()->value) : nullptr;
}

}  // namespace host::plist
