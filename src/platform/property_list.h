#pragma once

// Property lists: immutable values, shared by reference, that cross the layer as plain C++ values.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "platform/object.h"

namespace platform {

struct PropertyListNode;
struct PropertyListEntry;

/// Looks at one value of a property list that somebody else keeps alive. A null one answers like a
/// null handle. Any thread may read.
class PLATFORM_API PropertyListView {
 public:
  enum class Type : std::uint8_t {
    kNone,
    kBoolean,
    kInteger,
    kReal,
    kString,
    kDate,
    kData,
    kArray,
    kDictionary
  };

  constexpr PropertyListView() = default;
  constexpr explicit PropertyListView(const PropertyListNode* node) : node_(node) {}
  constexpr explicit operator bool() const { return node_ != nullptr; }
  constexpr const PropertyListNode* get() const { return node_; }

  Type type() const;
  bool isArray() const { return type() == Type::kArray; }
  bool isDictionary() const { return type() == Type::kDictionary; }
  bool isString() const { return type() == Type::kString; }
  /// A boolean is a number too, as on the device.
  bool isNumber() const {
    return type() == Type::kBoolean || type() == Type::kInteger || type() == Type::kReal;
  }

  /// The text of a string; none for every other type.
  std::optional<std::string_view> string() const;
  /// Whether a number differs from zero; false for every other type.
  bool boolValue() const;
  /// A number in single precision, the nearest there is; 0 for every other type.
  float floatValue() const;
  /// The values of an array, in order; empty for every other type.
  std::span<const PropertyListView> items() const;
  /// The entries of a dictionary, sorted by the bytes of their keys; empty for every other type.
  std::span<const PropertyListEntry> entries() const;
  /// The value under `key` in a dictionary; null when there is none, and for every other type.
  PropertyListView objectForKey(std::string_view key) const;

 private:
  const PropertyListNode* node_ = nullptr;
};

struct PropertyListEntry {
  std::string_view key;
  PropertyListView value;
};

/// Keeps a property list alive: the whole list that the value came from.
class PropertyList : public PropertyListView {
 public:
  constexpr PropertyList() = default;
  /// `node` is a part of what `owner` keeps alive.
  PropertyList(std::shared_ptr<const void> owner, const PropertyListNode* node)
      : PropertyListView(node), owner_(std::move(owner)) {}

  /// A value inside this one, kept alive on its own.
  PropertyList retained(PropertyListView part) const { return {owner_, part.get()}; }

  /// The dictionary at the root of the property-list file (XML or binary) at `path`; null when the
  /// file is missing, unreadable, malformed or no dictionary. Reads the file once, whole.
  PLATFORM_API static PropertyList dictionaryWithContentsOfFile(std::string_view path);
  /// An empty dictionary.
  PLATFORM_API static PropertyList dictionary();

 private:
  std::shared_ptr<const void> owner_;
};

}  // namespace platform
