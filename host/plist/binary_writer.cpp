#include <algorithm>
#include <bit>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include "host/plist/binary_format.h"
#include "host/plist/node.h"
#include "host/plist/utf8.h"
#include "host/plist/writer.h"

namespace host::plist {

using platform::PropertyListNode;
using platform::PropertyListView;

namespace {

using binary::Kind;

void appendBigEndian(std::string& bytes, std::uint64_t number, std::size_t size) {
  while (size-- > 0) bytes += static_cast<char>(number >> (8 * size) & 0xFFU);
}

/// How many bytes, a power of two of them, hold `number`.
constexpr std::size_t sizeOf(std::uint64_t number) {
  std::size_t size = 1;
  while (size < 8 && number >> (8 * size) != 0) size *= 2;
  return size;
}

void appendMarker(std::string& bytes, Kind kind, unsigned detail) {
  bytes += static_cast<char>(static_cast<unsigned>(kind) << 4U | detail);
}

/// Appends an integer: one of less than eight bytes has no sign.
void appendInteger(std::string& bytes, std::uint64_t number) {
  const std::size_t size = sizeOf(number);
  appendMarker(bytes, Kind::kInteger, static_cast<unsigned>(std::countr_zero(size)));
  appendBigEndian(bytes, number, size);
}

void appendCounted(std::string& bytes, Kind kind, std::size_t count) {
  const bool follows = count >= binary::kCountFollows;
  appendMarker(bytes, kind, follows ? binary::kCountFollows : static_cast<unsigned>(count));
  if (follows) appendInteger(bytes, count);
}

void appendDouble(std::string& bytes, Kind kind, double value) {
  constexpr unsigned kEightBytes = 3;
  appendMarker(bytes, kind, kEightBytes);
  appendBigEndian(bytes, std::bit_cast<std::uint64_t>(value), sizeof value);
}

std::u16string toUtf16(std::string_view text) {
  std::u16string units;
  while (!text.empty()) {
    const Utf8Character c = firstUtf8Character(text);
    if (c.codePoint < 0x10000) {
      units += static_cast<char16_t>(c.codePoint);
    } else {
      const char32_t offset = c.codePoint - 0x10000;
      units += static_cast<char16_t>(0xD800U + (offset >> 10U));
      units += static_cast<char16_t>(0xDC00U + (offset & 0x3FFU));
    }
    text.remove_prefix(c.length);
  }
  return units;
}

void appendString(std::string& bytes, std::string_view text) {
  if (isAscii(text)) {
    appendCounted(bytes, Kind::kAsciiString, text.size());
    bytes += text;
    return;
  }
  const std::u16string units = toUtf16(text);
  appendCounted(bytes, Kind::kUtf16String, units.size());
  for (const char16_t unit : units) appendBigEndian(bytes, unit, 2);
}

/// Numbers the objects, the root first and the contents of a container after it, then writes them
/// in that order.
class BinaryWriter {
 public:
  std::string write(PropertyListView root) && {
    reference(root);
    // It grows as the containers in it are looked into.
    for (std::size_t i = 0; i < objects_.size(); ++i) number(objects_[i]);
    referenceSize_ = sizeOf(objects_.size() - 1);
    bytes_ = binary::kHeader;
    for (const Object& object : objects_) {
      offsets_.push_back(bytes_.size());
      append(object);
    }
    appendTableAndTrailer();
    return std::move(bytes_);
  }

 private:
  /// A value or, without a node, a key. The references of containers follow one another in the
  /// order of the containers.
  struct Object {
    const PropertyListNode* node;
    std::string_view text;
  };

  std::size_t add(Object object) {
    objects_.push_back(object);
    return objects_.size() - 1;
  }

  std::size_t referenceText(std::string_view text) {
    const auto [place, isNew] = texts_.try_emplace(text, objects_.size());
    return isNew ? add({nullptr, text}) : place->second;
  }

  std::size_t referenceNode(PropertyListView view) {
    const auto [place, isNew] = nodes_.try_emplace(view.get(), objects_.size());
    return isNew ? add({view.get(), {}}) : place->second;
  }

  std::size_t reference(PropertyListView view) {
    const auto text = view.string();
    return text ? referenceText(*text) : referenceNode(view);
  }

  /// Numbers what a container refers to.
  void number(Object object) {
    const PropertyListView view(object.node);
    for (const auto& [key, value] : view.entries()) references_.push_back(referenceText(key));
    for (const auto& [key, value] : view.entries()) references_.push_back(reference(value));
    for (const PropertyListView item : view.items()) references_.push_back(reference(item));
  }

  void append(const Object& object) {
    if (object.node == nullptr) return appendString(bytes_, object.text);
    std::visit([&](const auto& value) { appendValue(value); }, object.node->value);
  }

  void appendValue(std::monostate) { appendMarker(bytes_, Kind::kSimple, binary::kNull); }
  void appendValue(bool value) {
    appendMarker(bytes_, Kind::kSimple, value ? binary::kTrue : binary::kFalse);
  }
  void appendValue(std::int64_t value) {
    appendInteger(bytes_, std::bit_cast<std::uint64_t>(value));
  }
  void appendValue(double value) { appendDouble(bytes_, Kind::kReal, value); }
  void appendValue(std::string_view text) { appendString(bytes_, text); }
  void appendValue(Date date) { appendDouble(bytes_, Kind::kDate, date.seconds - binary::kEpoch); }
  void appendValue(Data data) {
    appendCounted(bytes_, Kind::kData, data.size());
    for (const std::byte byte : data) bytes_ += std::to_integer<char>(byte);
  }
  void appendValue(Items items) {
    appendCounted(bytes_, Kind::kArray, items.size());
    appendReferences(items.size());
  }
  void appendValue(Entries entries) {
    appendCounted(bytes_, Kind::kDictionary, entries.size());
    appendReferences(2 * entries.size());
  }

  void appendReferences(std::size_t count) {
    for (; count > 0; --count) {
      appendBigEndian(bytes_, references_[nextReference_++], referenceSize_);
    }
  }

  void appendTableAndTrailer() {
    const std::size_t table = bytes_.size();
    const std::size_t offsetSize = sizeOf(table);
    for (const std::size_t offset : offsets_) appendBigEndian(bytes_, offset, offsetSize);
    bytes_.append(binary::kTrailerPadding, '\0');
    appendBigEndian(bytes_, offsetSize, 1);
    appendBigEndian(bytes_, referenceSize_, 1);
    appendBigEndian(bytes_, objects_.size(), 8);
    appendBigEndian(bytes_, 0, 8);  // the root
    appendBigEndian(bytes_, table, 8);
  }

  std::string bytes_;
  std::vector<Object> objects_;
  std::unordered_map<const PropertyListNode*, std::size_t> nodes_;
  std::unordered_map<std::string_view, std::size_t> texts_;
  std::vector<std::size_t> references_;
  std::vector<std::size_t> offsets_;
  std::size_t referenceSize_ = 1;
  std::size_t nextReference_ = 0;
};

}  // namespace

std::string writeBinary(PropertyListView root) {
  return root ? BinaryWriter().write(root) : "";
}

}  // namespace host::plist
