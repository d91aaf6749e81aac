#include "host/plist/binary_file.h"

#include <limits>
#include <string>

#include "host/plist/refusal.h"

namespace host::plist::binary {

namespace {

constexpr std::size_t kLargestNumber = 8;

[[noreturn]] void refuseAt(std::string_view place, std::size_t offset, std::string_view why) {
  throw Refusal{std::string(place) + " at offset " + std::to_string(offset) + ": " +
                std::string(why)};
}

constexpr std::size_t kNoUnit = std::numeric_limits<std::size_t>::max();
constexpr std::string_view kEndsOutside = "it ends outside the objects";

constexpr bool hasCount(Kind kind) {
  return kind == Kind::kData || kind == Kind::kAsciiString || kind == Kind::kUtf16String ||
         kind == Kind::kArray || kind == Kind::kDictionary;
}

constexpr bool isNumberSize(std::size_t size) {
  return size >= 1 && size <= kLargestNumber;
}

/// Why an object of a marker that no property list needs is refused.
constexpr std::string_view refusalOf(Kind kind, unsigned detail) {
  switch (kind) {
    case Kind::kSimple:
      if (detail == kNull) return "a null object";
      if (detail == kFill) return "a fill byte";
      break;
    case Kind::kUid:
      return "a UID";
    case Kind::kSet:
    case Kind::kOrderedSet:
      return "a set";
    default:
      break;
  }
  return "an unknown kind of object";
}

}  // namespace

std::uint64_t bigEndian(std::string_view bytes) {
  const auto byte = [&](std::size_t i) {
    return std::uint64_t{static_cast<unsigned char>(bytes[i])};
  };
  // What the offsets and references of nearly all files are.
  if (bytes.size() == 2) return byte(0) << 8U | byte(1);
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) number = number << 8U | byte(i);
  return number;
}

File::File(std::string_view bytes) {
  if (bytes.size() < kHeader.size() + kTrailerSize) {
    refuseAt("trailer", bytes.size(), "the file ends before it");
  }
  const std::size_t trailerOffset = bytes.size() - kTrailerSize;
  const std::string_view trailer = bytes.substr(trailerOffset + kTrailerPadding);
  offsetSize_ = bigEndian(trailer.substr(0, 1));
  referenceSize_ = bigEndian(trailer.substr(1, 1));
  const std::uint64_t count = bigEndian(trailer.substr(2, 8));
  const std::uint64_t root = bigEndian(trailer.substr(10, 8));
  const std::uint64_t table = bigEndian(trailer.substr(18, 8));

  const auto check = [&](bool good, std::string_view why) {
    if (!good) refuseAt("trailer", trailerOffset, why);
  };
  check(isNumberSize(offsetSize_), "offsets have to take 1 to 8 bytes");
  check(isNumberSize(referenceSize_), "references have to take 1 to 8 bytes");
  check(table >= kHeader.size() && table <= trailerOffset,
        "the offset table begins outside the file");
  const std::size_t tableSize = trailerOffset - table;
  check(count == tableSize / offsetSize_ && tableSize % offsetSize_ == 0,
        "the offset table does not end at the trailer");
  check(count != 0, "there are no objects");
  // Offsets of one byte could name many times more objects than the file has room for.
  check(count <= table - kHeader.size(), "there are more objects than bytes for them");
  check(root < count, "the root is none of the objects");
  objects_ = bytes.substr(0, table);
  offsets_ = bytes.substr(table, tableSize);
  objectCount_ = count;
  root_ = root;
}

std::uint64_t File::offsetOf(std::size_t index) const {
  return bigEndian(offsets_.substr(index * offsetSize_, offsetSize_));
}

void File::refuse(std::size_t index, std::string_view why) const {
  refuseAt("object " + std::to_string(index), offsetOf(index), why);
}

Object File::object(std::size_t index) const {
  const std::uint64_t offset = offsetOf(index);
  if (offset < kHeader.size() || offset >= objects_.size()) {
    refuse(index, "the offset lies outside the objects");
  }
  const auto marker = static_cast<unsigned char>(objects_[offset]);
  Object object = {static_cast<Kind>(marker >> 4U), marker & 0xFU, 0, objects_.substr(offset + 1)};
  const std::size_t unit = unitOf(object.kind, object.detail);
  if (unit == kNoUnit) refuse(index, refusalOf(object.kind, object.detail));
  object.count = hasCount(object.kind) ? object.detail : 1;
  if (object.count == kCountFollows) object.count = takeCount(index, object.body);
  // Divided rather than multiplied: the count is as large as a stranger likes.
  if (unit != 0 && object.count > object.body.size() / unit) refuse(index, kEndsOutside);
  object.body = object.body.substr(0, object.count * unit);
  return object;
}

std::size_t File::unitOf(Kind kind, unsigned detail) const {
  switch (kind) {
    case Kind::kSimple:
      return detail == kFalse || detail == kTrue ? 0 : kNoUnit;
    case Kind::kInteger:
      return detail <= 4 ? std::size_t{1} << detail : kNoUnit;
    case Kind::kReal:
      return detail == 2 || detail == 3 ? std::size_t{1} << detail : kNoUnit;
    case Kind::kDate:
      return detail == 3 ? 8 : kNoUnit;
    case Kind::kData:
    case Kind::kAsciiString:
      return 1;
    case Kind::kUtf16String:
      return 2;
    case Kind::kArray:
      return referenceSize_;
    case Kind::kDictionary:
      return 2 * referenceSize_;
    default:
      return kNoUnit;
  }
}

std::size_t File::takeCount(std::size_t index, std::string_view& body) const {
  constexpr unsigned kMostDetail = 3;  // eight bytes
  if (body.empty()) refuse(index, kEndsOutside);
  const auto marker = static_cast<unsigned char>(body.front());
  if (static_cast<Kind>(marker >> 4U) != Kind::kInteger || (marker & 0xFU) > kMostDetail) {
    refuse(index, "the count is no integer");
  }
  const std::size_t size = std::size_t{1} << (marker & 0xFU);
  if (size >= body.size()) refuse(index, kEndsOutside);
  const std::size_t count = bigEndian(body.substr(1, size));
  body.remove_prefix(1 + size);
  return count;
}

std::size_t File::reference(std::size_t index, std::string_view body, std::size_t place) const {
  const auto target = bigEndian(body.substr(place * referenceSize_, referenceSize_));
  if (target >= objectCount_) {
    refuse(index, "it refers to object " + std::to_string(target) + ", which is not there");
  }
  return target;
}

}  // namespace host::plist::binary
