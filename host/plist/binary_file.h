#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "host/plist/binary_format.h"

namespace host::plist::binary {

/// An object as it lies in the file.
struct Object {
  Kind kind{};
  unsigned detail = 0;
  /// How many code units, bytes, items or entries the body holds; 1 for a value of fixed size.
  std::size_t count = 0;
  /// What follows the marker and the count, exactly: all of it lies among the objects.
  std::string_view body;
};

/// The big-endian number that `bytes` are, at most eight of them.
std::uint64_t bigEndian(std::string_view bytes);

/// Finds the objects of a binary property list; keeps every look at them inside the file.
class File {
 public:
  /// `bytes`, which must outlive this, begin with the magic. Throws Refusal when the trailer or the
  /// size of the offset table is wrong.
  explicit File(std::string_view bytes);

  std::size_t objectCount() const { return objectCount_; }
  std::size_t root() const { return root_; }

  /// The object numbered `index`, less than objectCount(). Throws Refusal when it is of no kind
  /// that a property list holds or does not lie among the objects whole.
  Object object(std::size_t index) const;

  /// The index at place `place` in the body of the array or dictionary numbered `index`. Throws
  /// Refusal when there is no such object.
  std::size_t reference(std::size_t index, std::string_view body, std::size_t place) const;

  /// Throws a Refusal that names the object numbered `index` as the place.
  [[noreturn]] void refuse(std::size_t index, std::string_view why) const;

 private:
  std::uint64_t offsetOf(std::size_t index) const;
  /// How many bytes of the body one of its items takes, or the value itself; a marker that is none
  /// of a property list's has none.
  std::size_t unitOf(Kind kind, unsigned detail) const;
  /// Takes the count that follows a marker off the front of `body`.
  std::size_t takeCount(std::size_t index, std::string_view& body) const;

  std::string_view objects_;  // with the header, so that offsets count from its start
  std::string_view offsets_;
  std::size_t offsetSize_ = 0;
  std::size_t referenceSize_ = 0;
  std::size_t objectCount_ = 0;
  std::size_t root_ = 0;
};

}  // namespace host::plist::binary
