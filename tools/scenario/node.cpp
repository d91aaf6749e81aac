#include "scenario/node.h"

#include <algorithm>
#include <utility>

#include "scenario/json_output.h"
#include "scenario/pointer.h"

namespace tools::scenario {
namespace {

std::string describe(const nlohmann::ordered_json& value) {
  switch (value.type()) {
    case nlohmann::ordered_json::value_t::null:
      return "null";
    case nlohmann::ordered_json::value_t::boolean:
      return value.get<bool>() ? "true" : "false";
    case nlohmann::ordered_json::value_t::string:
      return "a string";
    case nlohmann::ordered_json::value_t::array:
      return "an array";
    case nlohmann::ordered_json::value_t::object:
      return "an object";
    default:
      return "the number " + line(value);
  }
}

}  // namespace

std::string Node::pointer() const {
  std::vector<const Node*> path;
  for (const Node* node = this; node->parent_ != nullptr; node = node->parent_)
    path.push_back(node);
  std::string text;
  for (auto node = path.rbegin(); node != path.rend(); ++node) {
    text = (*node)->index_ ? pointerTo(std::move(text), *(*node)->index_)
                           : pointerTo(std::move(text), (*node)->name_);
  }
  return text;
}

void Node::refuse(const std::string& reason) const {
  throw Malformed(pointer(), reason);
}

void Node::refuseType(std::string_view wanted) const {
  refuse("expected " + std::string(wanted) + ", found " + describe(*value_));
}

const std::string& Node::string() const {
  if (!value_->is_string()) refuseType("a string");
  return value_->get_ref<const std::string&>();
}

bool Node::boolean() const {
  if (!value_->is_boolean()) refuseType("true or false");
  return value_->get<bool>();
}

double Node::real() const {
  if (!value_->is_number()) refuseType("a number");
  return value_->get<double>();
}

bool Node::isHugeInteger() const {
  return value_->is_number() && !document_->hugeIntegers.empty() &&
         document_->hugeIntegers.contains(pointer());
}

std::int64_t Node::integer() const {
  if (isHugeInteger()) refuse("an integer beyond 64 bits");
  if (!value_->is_number_integer()) refuseType("an integer");
  return value_->get<std::int64_t>();
}

std::int32_t Node::int32() const {
  const auto value = integer();
  if (!std::in_range<std::int32_t>(value)) refuse("an integer beyond 32 bits");
  return static_cast<std::int32_t>(value);
}

std::vector<std::string> Node::strings() const {
  std::vector<std::string> all;
  forEachElement([&](const Node& element) { all.push_back(element.string()); });
  return all;
}

void Node::requireLength(std::size_t count) const {
  const auto wanted = "an array of " + std::to_string(count);
  if (!value_->is_array()) refuseType(wanted);
  if (value_->size() != count)
    refuse("expected " + wanted + ", found " + std::to_string(value_->size()));
}

void Node::requireOnly(std::initializer_list<std::string_view> names) const {
  forEachMember([&](std::string_view name, const Node& node) {
    if (std::find(names.begin(), names.end(), name) == names.end()) node.refuse("unknown member");
  });
}

std::optional<Node> Node::find(std::string_view name) const& {
  if (!value_->is_object()) refuseType("an object");
  // The name that the node keeps is the document's own, which lives as long as it is looked at.
  for (const auto& [key, value] : value_->get_ref<const nlohmann::ordered_json::object_t&>()) {
    if (key == name) return Node(*this, value, key);
  }
  return std::nullopt;
}

Node Node::at(std::string_view name) const& {
  if (auto node = find(name)) return *node;
  throw Malformed(pointerTo(pointer(), name), "missing");
}

}  // namespace tools::scenario
