#include "scenario/document.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "scenario/pointer.h"
#include "scenario/syntax_error.h"

namespace tools::scenario {
namespace {

using Json = nlohmann::ordered_json;

std::string lineAndColumn(std::string_view text, std::size_t offset) {
  const auto before = text.substr(0, offset);
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  const auto column = 1 + (before.size() - (before.rfind('\n') + 1));  // npos + 1 is 0
  return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

/// Builds the tree value by value. The parser calls it in the order of the text and does not
/// recurse itself, so the depth can be bounded here before anything deep exists.
class TreeBuilder final : public nlohmann::json_sax<Json> {
 public:
  explicit TreeBuilder(std::string_view text) : text_(text) {}

  Document take() { return std::move(document_); }

  bool null() override { return add(nullptr); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(std::int64_t value) override { return add(value); }
  bool number_unsigned(std::uint64_t value) override {
    if (!std::in_range<std::int64_t>(value)) document_.hugeIntegers.insert(nextPlace());
    return add(value);
  }
  bool number_float(double value, const std::string& literal) override {
    if (literal.find_first_of(".eE") == literal.npos) document_.hugeIntegers.insert(nextPlace());
    return add(value);
  }
  bool string(std::string& value) override { return add(std::move(value)); }
  bool binary(Json::binary_t&) override { return false; }  // no such thing in text

  bool start_object(std::size_t) override { return open(Json::object()); }
  bool start_array(std::size_t) override { return open(Json::array()); }
  bool end_object() override { return close(); }
  bool end_array() override { return close(); }

  bool key(std::string& name) override {
    auto& object = open_.back();
    object.key = std::move(name);
    if (object.keys.insert(object.key).second) return true;
    throw Malformed(nextPlace(), "a second member of this name");
  }

  bool parse_error(std::size_t position, const std::string&,
                   const nlohmann::detail::exception& error) override {
    // The position counts the bytes read, the offending one included.
    const auto place = lineAndColumn(text_, position == 0 ? 0 : position - 1);
    if (error.id == kNumberOverflow)
      throw Malformed(place, "a number beyond the range of a double");
    throw Malformed(place, plainReason(error.what()));
  }

 private:
  struct Open {
    Json value;
    // Of an object, until it is closed: the tree's own table would copy what it holds, with all
    // that lies below, each time it grows.
    std::vector<std::pair<std::string, Json>> members;
    std::unordered_set<std::string> keys;
    std::string key;  // under which the next value goes
  };

  bool open(Json&& empty) {
    if (open_.size() == kMaxDepth) {
      throw Malformed(nextPlace(), "nested deeper than " + std::to_string(kMaxDepth) + " levels");
    }
    open_.push_back({std::move(empty), {}, {}, {}});
    return true;
  }

  bool close() {
    auto closed = std::move(open_.back());
    open_.pop_back();
    if (closed.value.is_object()) {
      // As the vector that it is, because every other way in searches it for the key.
      std::vector<Json::object_t::value_type>& table = closed.value.get_ref<Json::object_t&>();
      table.reserve(closed.members.size());
      for (auto& [key, value] : closed.members) {
        table.emplace_back(std::move(key), std::move(value));
      }
    }
    return add(std::move(closed.value));
  }

  bool add(Json&& value) {
    if (open_.empty()) {
      document_.root = std::move(value);
    } else if (auto& parent = open_.back(); parent.value.is_array()) {
      parent.value.push_back(std::move(value));
    } else {
      parent.members.emplace_back(std::move(parent.key), std::move(value));
    }
    return true;
  }

  std::string nextPlace() const {
    std::string place;
    for (const auto& open : open_) {
      place = open.value.is_array() ? pointerTo(std::move(place), open.value.size())
                                    : pointerTo(std::move(place), open.key);
    }
    return place;
  }

  std::string_view text_;
  Document document_;
  std::vector<Open> open_;
};

}  // namespace

Document parse(std::string_view text) {
  if (text.size() > kMaxTextBytes) {
    throw Malformed("", "larger than " + std::to_string(kMaxTextBytes >> 20) + " MiB");
  }
  TreeBuilder builder(text);
  Json::sax_parse(text, &builder);
  return builder.take();
}

}  // namespace tools::scenario
