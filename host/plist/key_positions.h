#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/plist/node.h"
#include "host/plist/reader.h"

namespace host::plist {

/// The keys of a file: where the <key> elements of an XML file begin, and which of them count for
/// nothing. Values know their own place; keys are bare texts in the list, so their places stand
/// here, for whoever wants to point at one.
class KeyPositions {
 public:
  /// A key that the same dictionary has once more further down, which makes this one count for
  /// nothing.
  struct Repeated {
    std::string key;
    Position position;                        ///< none in a binary list
    const platform::PropertyListEntry* last;  ///< of the list: the one that counts
  };

  /// The place of `key`, which must be the very text of an entry of the list that was read: equal
  /// keys of two dictionaries are told apart by where they lie in memory. None in a binary list.
  Position of(std::string_view key) const;
  std::span<const Repeated> repeated() const { return repeated_; }

  // For the reader.
  void add(std::string_view key, Position position);
  /// `written` are all entries of a dictionary in the order of the file, `kept` those that count.
  void addRepeated(Entries written, Entries kept);

 private:
  std::unordered_map<const char*, Position> positions_;
  std::vector<Repeated> repeated_;
};

/// Reads like `read` (reader.h), and notes in `keys` where the keys of an XML file stand.
Reading read(std::string_view bytes, KeyPositions& keys);

// The same for readXml and readBinary.
Reading readXml(std::string_view bytes, KeyPositions& keys);
Reading readBinary(std::string_view bytes, KeyPositions& keys);

}  // namespace host::plist
