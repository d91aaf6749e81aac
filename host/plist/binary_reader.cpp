#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "host/plist/binary_file.h"
#include "host/plist/builder.h"
#include "host/plist/date_text.h"
#include "host/plist/key_positions.h"
#include "host/plist/limits.h"
#include "host/plist/reader.h"
#include "host/plist/refusal.h"
#include "host/plist/utf8.h"

namespace host::plist {

using platform::PropertyList;
using platform::PropertyListEntry;
using platform::PropertyListView;

namespace {

using binary::Kind;
using binary::Object;

constexpr std::string_view kWrittenOut = " once what is shared is written out";

/// What a value comes to when everything it shares is counted as often as it stands somewhere.
struct Extent {
  std::size_t values = 1;
  /// Of text, keys and data.
  std::size_t bytes = 0;
  /// Containers on the longest way down, this one included.
  std::size_t depth = 0;
};

struct ReadObject {
  PropertyListView value;  // null while its contents are being read
  Extent extent;
};

/// A container whose contents are being read.
struct OpenContainer {
  std::size_t index = 0;
  bool isDictionary = false;
  std::size_t count = 0;
  std::string_view references;
  std::size_t next = 0;
  std::size_t first = 0;  // of its values, on the stack that collects them
  Extent extent;
};

/// Reads what the root refers to, every object once, leaves first. Each refusal comes before the
/// memory or the time that it saves is spent.
class BinaryReader {
 public:
  /// `keys` may be null.
  BinaryReader(std::string_view bytes, KeyPositions* keys)
      : file_(bytes), keys_(keys), unspentBytes_(bytes.size()), places_(file_.objectCount()) {
    // A file may say that it has any number of objects; most of those it says it has are read.
    constexpr std::size_t kMost = std::size_t{1} << 16U;
    read_.reserve(std::min(file_.objectCount(), kMost));
  }

  PropertyList read() && {
    begin(file_.root());
    while (!open_.empty()) advance();
    return builder_.finish(find(file_.root())->value);
  }

 private:
  ReadObject* find(std::size_t index) {
    return places_[index] == 0 ? nullptr : &read_[places_[index] - 1];
  }

  ReadObject& remember(std::size_t index, ReadObject object) {
    read_.push_back(object);
    places_[index] = static_cast<std::uint32_t>(read_.size());
    return read_.back();
  }

  void begin(std::size_t index) {
    const Object object = file_.object(index);
    if (object.kind == Kind::kArray || object.kind == Kind::kDictionary) {
      open(index, object);
    } else {
      remember(index, leaf(index, object));
    }
  }

  void open(std::size_t index, const Object& object) {
    if (open_.size() == kMaxDepth) refuseDepth(index);
    // Every container is in the list at least once, so what all of them refer to is, too.
    if (object.count > kMaxValues - referredTo_) refuseValues(index);
    referredTo_ += object.count;
    const bool isDictionary = object.kind == Kind::kDictionary;
    const std::size_t first = isDictionary ? entries_.size() : items_.size();
    open_.push_back({index, isDictionary, object.count, object.body, 0, first, {1, 0, 1}});
    remember(index, {});
  }

  /// Takes the next value of the innermost container in, if it is there; begins it otherwise.
  void advance() {
    OpenContainer& container = open_.back();
    if (container.next == container.count) return close();
    const std::size_t values = container.isDictionary ? container.count : 0;
    const std::size_t target =
        file_.reference(container.index, container.references, values + container.next);
    const ReadObject* child = find(target);
    if (child == nullptr) return begin(target);
    if (!child->value) file_.refuse(target, "it contains itself");
    take(container, *child);
    ++container.next;
  }

  void take(OpenContainer& container, const ReadObject& child) {
    // A copy: reading the key may move what `child` refers to.
    const auto [value, extent] = child;
    if (open_.size() + extent.depth > kMaxDepth) refuseDepth(container.index);
    if (extent.values > kMaxValues - container.extent.values) refuseValues(container.index);
    container.extent.values += extent.values;
    container.extent.depth = std::max(container.extent.depth, extent.depth + 1);
    spend(container, extent.bytes);
    if (!container.isDictionary) return items_.push_back(value);
    const std::string_view text = key(container);
    spend(container, text.size());
    entries_.push_back({text, value});
  }

  void spend(OpenContainer& container, std::size_t bytes) {
    if (bytes > kMaxExpandedBytes - container.extent.bytes) {
      file_.refuse(container.index, "more than " + std::to_string(kMaxExpandedBytes >> 20U) +
                                        " MiB of text" + std::string(kWrittenOut));
    }
    container.extent.bytes += bytes;
  }

  /// The key of the next value of `container`.
  std::string_view key(const OpenContainer& container) {
    const std::size_t index =
        file_.reference(container.index, container.references, container.next);
    const ReadObject* known = find(index);
    if (known == nullptr) {
      const Object object = file_.object(index);
      if (object.kind == Kind::kAsciiString || object.kind == Kind::kUtf16String) {
        known = &remember(index, leaf(index, object));
      }
    }
    const auto text = known ? known->value.string() : std::nullopt;
    if (!text) file_.refuse(index, "a key that is no string");
    return *text;
  }

  void close() {
    const OpenContainer container = open_.back();
    open_.pop_back();
    ReadObject& object = *find(container.index);
    object.extent = container.extent;
    if (container.isDictionary) {
      const auto written = Entries(entries_).subspan(container.first);
      object.value = builder_.dictionary(written);
      if (keys_) keys_->addRepeated(written, object.value.entries());
      entries_.resize(container.first);
    } else {
      object.value = builder_.array(Items(items_).subspan(container.first));
      items_.resize(container.first);
    }
  }

  ReadObject leaf(std::size_t index, const Object& object) {
    switch (object.kind) {
      case Kind::kInteger:
        return {builder_.integer(integer(index, object.body)), {}};
      case Kind::kReal:
        return {builder_.real(real(index, object.body)), {}};
      case Kind::kDate:
        return {builder_.date(date(index, object.body)), {}};
      case Kind::kData:
        spendInput(index, object);
        return {builder_.data(std::as_bytes(std::span(object.body))), {1, object.body.size(), 0}};
      case Kind::kAsciiString:
        spendInput(index, object);
        if (!isAscii(object.body)) file_.refuse(index, "a byte that is not ASCII");
        return string(object.body);
      case Kind::kUtf16String:
        spendInput(index, object);
        decodeUtf16(index, object.body);
        return string(text_);
      default:
        return {builder_.boolean(object.detail == binary::kTrue), {}};
    }
  }

  ReadObject string(std::string_view text) { return {builder_.string(text), {1, text.size(), 0}}; }

  /// Objects beside each other cannot be longer together than the file. Ones that overlap could be,
  /// and would fill the memory.
  void spendInput(std::size_t index, const Object& object) {
    if (object.body.size() > unspentBytes_) file_.refuse(index, "it overlaps other objects");
    unspentBytes_ -= object.body.size();
  }

  std::int64_t integer(std::size_t index, std::string_view body) const {
    const std::uint64_t low = binary::bigEndian(body.substr(body.size() > 8 ? body.size() - 8 : 0));
    const auto number = std::bit_cast<std::int64_t>(low);
    const std::uint64_t sign = number < 0 ? ~std::uint64_t{0} : 0;
    if (body.size() > 8 && binary::bigEndian(body.substr(0, body.size() - 8)) != sign) {
      file_.refuse(index, "an integer that does not fit into 64 bits");
    }
    return number;
  }

  double floating(std::string_view body) const {
    const std::uint64_t bits = binary::bigEndian(body);
    if (body.size() == sizeof(double)) return std::bit_cast<double>(bits);
    return std::bit_cast<float>(static_cast<std::uint32_t>(bits));
  }

  double real(std::size_t index, std::string_view body) const {
    const double value = floating(body);
    if (!std::isfinite(value)) file_.refuse(index, "a real that is not finite");
    return value;
  }

  Date date(std::size_t index, std::string_view body) const {
    const Date value = {floating(body) + binary::kEpoch};
    if (!isWritable(value)) file_.refuse(index, "a date outside the years 1 to 9999");
    return value;
  }

  void decodeUtf16(std::size_t index, std::string_view body) {
    text_.clear();
    const auto unit = [&](std::size_t i) {
      return static_cast<char32_t>(binary::bigEndian(body.substr(i, 2)));
    };
    for (std::size_t i = 0; i < body.size(); i += 2) {
      char32_t c = unit(i);
      if (c >= 0xD800 && c < 0xE000) {
        const char32_t low = c < 0xDC00 && i + 2 < body.size() ? unit(i + 2) : 0;
        if (low < 0xDC00 || low >= 0xE000) file_.refuse(index, "half of a surrogate pair");
        c = 0x10000 + ((c - 0xD800) << 10U) + (low - 0xDC00);
        i += 2;
      }
      appendUtf8(text_, c);
    }
  }

  [[noreturn]] void refuseDepth(std::size_t index) const {
    file_.refuse(index, "containers nest deeper than " + std::to_string(kMaxDepth));
  }

  [[noreturn]] void refuseValues(std::size_t index) const {
    file_.refuse(index,
                 "more than " + std::to_string(kMaxValues) + " values" + std::string(kWrittenOut));
  }

  binary::File file_;
  KeyPositions* keys_;
  Builder builder_;
  std::size_t unspentBytes_;
  std::size_t referredTo_ = 1;  // the root
  /// For each object of the file its place in `read_`, counted from 1.
  std::vector<std::uint32_t> places_;
  std::vector<ReadObject> read_;
  std::vector<OpenContainer> open_;
  // What the open containers hold so far, the innermost's last.
  std::vector<PropertyListView> items_;
  std::vector<PropertyListEntry> entries_;
  std::string text_;
};

Reading readFile(std::string_view bytes, KeyPositions* keys) {
  try {
    if (!bytes.starts_with(binary::kMagic))
      return {{}, "header at offset 0: no binary property list"};
    if (bytes.size() > kMaxBytes) return {{}, whyTooLong()};
    return {BinaryReader(bytes, keys).read(), {}};
  } catch (Refusal& refusal) {
    return {{}, std::move(refusal.reason)};
  }
}

}  // namespace

Reading readBinary(std::string_view bytes) {
  return readFile(bytes, nullptr);
}

Reading readBinary(std::string_view bytes, KeyPositions& keys) {
  return readFile(bytes, &keys);
}

}  // namespace host::plist
