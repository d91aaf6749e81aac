#pragma once

// A place in a document, and the ways to read what is there. Every way checks the type; all throw
// Malformed with the place.

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scenario/document.h"

namespace tools::scenario {

/// Looks at a value of a document. It knows its place by its parents, so that a pointer is put
/// together only for a fault: a node must not outlive the node that it was made from.
class Node {
 public:
  explicit Node(const Document& document) : document_(&document), value_(&document.root) {}

  const nlohmann::ordered_json& json() const { return *value_; }
  bool isNull() const { return value_->is_null(); }
  std::string pointer() const;

  [[noreturn]] void refuse(const std::string& reason) const;
  /// `wanted` is a noun with its article.
  [[noreturn]] void refuseType(std::string_view wanted) const;

  const std::string& string() const;
  bool boolean() const;
  /// Any number, as the nearest double.
  double real() const;
  /// Whether a number was written without point or exponent and is beyond 64 bits.
  bool isHugeInteger() const;
  /// A number written without point or exponent.
  std::int64_t integer() const;
  /// The same, within the 32 bits that an int of the device has.
  std::int32_t int32() const;
  std::vector<std::string> strings() const;

  /// Calls `visit(Node)` for every element of an array.
  template <class Visit>
  void forEachElement(Visit visit) const {
    if (!value_->is_array()) refuseType("an array");
    for (std::size_t i = 0; i < value_->size(); ++i) visit(Node(*this, (*value_)[i], i));
  }

  /// Calls `visit(name, Node)` for every member of an object, in the order of writing.
  template <class Visit>
  void forEachMember(Visit visit) const {
    if (!value_->is_object()) refuseType("an object");
    for (const auto& [name, value] : value_->get_ref<const nlohmann::ordered_json::object_t&>()) {
      visit(name, Node(*this, value, name));
    }
  }

  /// Exactly `count` numbers.
  template <std::size_t count>
  std::array<double, count> reals() const {
    requireLength(count);
    std::array<double, count> all{};
    std::size_t next = 0;
    forEachElement([&](const Node& element) { all[next++] = element.real(); });
    return all;
  }

  /// Throws for a value that is no array of exactly `count` elements.
  void requireLength(std::size_t count) const;
  /// Throws for a value that is no object, and at the first member whose name is not among `names`.
  void requireOnly(std::initializer_list<std::string_view> names) const;

  /// The member of that name of an object, if there is one.
  std::optional<Node> find(std::string_view name) const&;
  std::optional<Node> find(std::string_view name) const&& =
      delete;  // it would look at a dead parent
  /// The member of that name; throws, at its place, when there is none.
  Node at(std::string_view name) const&;
  Node at(std::string_view name) const&& = delete;
  bool has(std::string_view name) const { return find(name).has_value(); }

 private:
  Node(const Node& parent, const nlohmann::ordered_json& value, std::string_view name)
      : document_(parent.document_), value_(&value), parent_(&parent), name_(name) {}
  Node(const Node& parent, const nlohmann::ordered_json& value, std::size_t index)
      : document_(parent.document_), value_(&value), parent_(&parent), index_(index) {}

  const Document* document_;
  const nlohmann::ordered_json* value_;
  const Node* parent_ = nullptr;
  std::string_view name_;
  std::optional<std::size_t> index_;
};

/// `read(node)`, or none for null.
template <class Read>
auto nullable(const Node& node, Read read) -> std::optional<decltype(read(node))> {
  if (node.isNull()) return std::nullopt;
  return read(node);
}

/// Reads the member `name` of `object` into `into` when it is there, else leaves `into` alone.
template <class T, class Read>
void member(const Node& object, std::string_view name, T& into, Read read) {
  if (const auto node = object.find(name)) into = read(*node);
}

/// The same for a member that may be null, which leaves `into` without a value.
template <class T, class Read>
void nullableMember(const Node& object, std::string_view name, std::optional<T>& into, Read read) {
  if (const auto node = object.find(name)) into = nullable(*node, read);
}

// The reads above as functions, to be handed to member().
inline std::string asString(const Node& node) {
  return node.string();
}
inline bool asBoolean(const Node& node) {
  return node.boolean();
}
inline double asReal(const Node& node) {
  return node.real();
}
inline std::int32_t asInt32(const Node& node) {
  return node.int32();
}
inline std::vector<std::string> asStrings(const Node& node) {
  return node.strings();
}

}  // namespace tools::scenario
