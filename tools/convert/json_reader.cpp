#include "convert/json_reader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "convert/exact_date.h"
#include "convert/json_notation.h"
#include "host/plist/base64.h"
#include "host/plist/builder.h"
#include "host/plist/description.h"
#include "host/plist/limits.h"
#include "host/plist/number_text.h"
#include "host/plist/refusal.h"
#include "host/plist/text_position.h"
#include "scenario/syntax_error.h"

namespace tools::convert {

using host::plist::Builder;
using host::plist::kMaxDepth;
using platform::PropertyListView;

namespace {

/// Walks the text for the parser, which tells nobody how far it is, and notes it.
class Reader {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  Reader(const char* at, const char** reached) : at_(at), reached_(reached) {}
  reference operator*() const { return *at_; }
  Reader& operator++() {
    *reached_ = ++at_;
    return *this;
  }
  bool operator==(const Reader& other) const { return at_ == other.at_; }

 private:
  const char* at_;
  const char** reached_;
};

/// Makes values as the parser meets them, leaves first. The parser does not recurse, so the depth
/// can be bounded here before anything deep exists.
class ListMaker final : public nlohmann::json_sax<nlohmann::json> {
 public:
  explicit ListMaker(std::string_view text) : text_(text), reached_(text.data()) {}

  platform::PropertyList read() {
    const char* const end = text_.data() + text_.size();
    nlohmann::json::sax_parse(Reader(text_.data(), &reached_), Reader(end, &reached_), this);
    return builder_.finish(values_.back());
  }

  bool null() override { refuse(nextToken(), "a property list has no null"); }
  bool boolean(bool value) override {
    nextToken();
    return add(builder_.boolean(value));
  }
  bool number_integer(std::int64_t value) override {
    nextToken();
    return add(builder_.integer(value));
  }
  bool number_unsigned(std::uint64_t value) override {
    const std::size_t place = nextToken();
    if (!std::in_range<std::int64_t>(value)) refuseInteger(place);
    return add(builder_.integer(static_cast<std::int64_t>(value)));
  }
  /// Also called for integers that the parser can't hold.
  bool number_float(double, const std::string& literal) override {
    const std::size_t place = nextToken();
    if (literal.find_first_of(".eE") == literal.npos) refuseInteger(place);
    const auto value = host::plist::parseReal(literal);
    if (!value) refuseReal(place);
    return add(builder_.real(*value));
  }
  bool string(std::string& value) override {
    nextToken();
    return add(builder_.string(value));
  }
  bool binary(nlohmann::json::binary_t&) override { return false; }  // no such thing in text

  bool start_object(std::size_t) override {
    // One level more than a list has: that of the member that says what a value is.
    const std::size_t place = nextToken();
    if (open_.size() > kMaxDepth) refuseDepth(place);
    open_.push_back({place, values_.size(), {}, {}});
    return true;
  }
  bool start_array(std::size_t) override {
    const std::size_t place = nextToken();
    if (open_.size() >= kMaxDepth) refuseDepth(place);
    open_.push_back({place, values_.size(), {}, {}});
    return true;
  }
  bool key(std::string& name) override {
    const std::size_t place = nextToken();
    Open& object = open_.back();
    object.keys.push_back(builder_.keep(name));
    if (object.known.insert(object.keys.back()).second) return true;
    refuse(place, "a second member named " + quoted(name));
  }
  bool end_object() override {
    nextToken();
    const Open object = std::move(open_.back());
    open_.pop_back();
    return replace(object, objectOf(object));
  }
  bool end_array() override {
    nextToken();
    const Open array = std::move(open_.back());
    open_.pop_back();
    return replace(array, builder_.array(std::span(values_).subspan(array.first)));
  }

  bool parse_error(std::size_t position, const std::string&,
                   const nlohmann::detail::exception& error) override {
    // It counts the bytes read, the offending one included.
    if (error.id == scenario::kNumberOverflow) refuseReal(nextToken());
    refuse(std::min(position == 0 ? 0 : position - 1, text_.size()),
           scenario::plainReason(error.what()));
  }

 private:
  struct Open {
    std::size_t place;
    std::size_t first;  // of its values, on the stack that collects them
    std::vector<std::string_view> keys;
    std::unordered_set<std::string_view> known;
  };

  /// Where the token that the parser has just read begins; the next search goes on behind it. A
  /// number is known to end by the character behind it, a bracket or comma that is nobody's
  /// beginning.
  std::size_t nextToken() {
    constexpr std::string_view kBetween = " \t\r\n,:\xEF\xBB\xBF";  // and the byte-order mark
    const std::size_t place = std::min(text_.find_first_not_of(kBetween, behind_), text_.size());
    behind_ = static_cast<std::size_t>(reached_ - text_.data());
    return place;
  }

  bool add(PropertyListView value) {
    if (++count_ > host::plist::kMaxValues) {
      refuse(behind_, "more than " + std::to_string(host::plist::kMaxValues) + " values");
    }
    values_.push_back(value);
    return true;
  }

  /// Puts `value` in the place of what `container` holds.
  bool replace(const Open& container, PropertyListView value) {
    values_.resize(container.first);
    return add(value);
  }

  PropertyListView objectOf(const Open& object) {
    if (object.keys.size() == 1) {
      const PropertyListView only = values_.back();
      if (object.keys[0] == kDataMember) return data(object.place, only);
      if (object.keys[0] == kDateMember) return date(object.place, only);
    }
    if (open_.size() >= kMaxDepth) refuseDepth(object.place);
    return dictionary(object);
  }

  PropertyListView dictionary(const Open& object) {
    std::vector<Builder::Entry> entries;
    entries.reserve(object.keys.size());
    for (std::size_t i = 0; i < object.keys.size(); ++i) {
      entries.push_back({object.keys[i], values_[object.first + i]});
    }
    if (entries.size() == 1 && looksLikeNotation(entries[0].key)) entries[0].key.remove_prefix(1);
    return builder_.dictionary(entries);
  }

  /// The text of the only member of the object at `place`, which then was no value of its own.
  std::string_view noted(std::size_t place, PropertyListView only, const std::string& wanted) {
    if (!only.isString()) refuse(place, wanted);
    --count_;
    return *only.string();
  }

  PropertyListView data(std::size_t place, PropertyListView only) {
    const std::string wanted =
        "expected base64 with its padding in \"$data\" (a dictionary with this key alone is "
        "written "
        "with \"$$data\")";
    const auto bytes = host::plist::decodeBase64(noted(place, only, wanted));
    if (!bytes) refuse(place, wanted);
    return builder_.data(*bytes);
  }

  PropertyListView date(std::size_t place, PropertyListView only) {
    const std::string wanted =
        "expected a date like 2013-09-18T00:00:00Z in \"$date\" (a dictionary with this key alone "
        "is "
        "written with \"$$date\")";
    const auto moment = exactDate(noted(place, only, wanted));
    if (!moment) refuse(place, wanted);
    return builder_.date(*moment);
  }

  static std::string quoted(std::string_view name) {
    constexpr std::size_t kGlance = 100;  // bytes
    return "\"" + host::plist::escapeControls(name.substr(0, kGlance)) +
           (name.size() > kGlance ? "...\"" : "\"");
  }

  [[noreturn]] void refuse(std::size_t place, const std::string& why) const {
    const auto [line, column] = host::plist::TextPosition(text_).at(place);
    throw host::plist::Refusal{"line " + std::to_string(line) + ", column " +
                               std::to_string(column) + ": " + why};
  }
  [[noreturn]] void refuseInteger(std::size_t place) const {
    refuse(place, "an integer beyond 64 bits; a real is written with a point");
  }
  [[noreturn]] void refuseReal(std::size_t place) const {
    refuse(place, "a number beyond the range of a double");
  }
  [[noreturn]] void refuseDepth(std::size_t place) const {
    refuse(place, "nested deeper than " + std::to_string(kMaxDepth) + " levels");
  }

  std::string_view text_;
  const char* reached_;
  std::size_t behind_ = 0;
  Builder builder_;
  std::vector<Open> open_;
  std::vector<PropertyListView> values_;
  std::size_t count_ = 0;
};

}  // namespace

host::plist::Reading readJson(std::string_view text) {
  if (text.size() > host::plist::kMaxBytes) return {{}, host::plist::whyTooLong()};
  try {
    return {ListMaker(text).read(), {}};
  } catch (const host::plist::Refusal& refusal) {
    return {{}, refusal.reason};
  }
}

}  // namespace tools::convert
