#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/plist/builder.h"
#include "host/plist/key_positions.h"
#include "host/plist/text_position.h"

namespace host::plist {

enum class XmlElement : std::uint8_t {
  kKey,
  kString,
  kInteger,
  kReal,
  kTrue,
  kFalse,
  kDate,
  kData,
  kDict,
  kArray,
  kPlist
};

/// The element of that name, if property lists have one.
std::optional<XmlElement> xmlElement(std::string_view name);
std::string_view nameOf(XmlElement element);

/// Makes the values of an XML document from its tags and texts, as whoever takes the document apart
/// comes across them. It keeps a stack of the containers that are open and at most one open element
/// that holds text. Throws Refusal where what comes makes no property list.
class XmlValues {
 public:
  /// `bytes`, which must outlive this, are the document, UTF-8. `keys` may be null.
  XmlValues(std::string_view bytes, KeyPositions* keys)
      : bytes_(bytes), positions_(bytes), keys_(keys) {}

  // `offset` is where in the document the tag or the text begins.
  void start(XmlElement element, std::size_t offset);
  void text(std::string_view run, std::size_t offset);
  /// Ends what was begun last, which is for the caller to see to.
  void end(std::size_t offset);

  /// The whole list, once the document is at its end.
  platform::PropertyList finish() && { return builder_.finish(root_); }

  [[noreturn]] void refuse(std::size_t offset, std::string_view why);
  /// What is open, to go behind a reason: its end may be what is missing. Empty when nothing is.
  std::string stillOpen() const;

 private:
  struct Leaf {
    XmlElement element;
    std::size_t offset;
    Position position;
  };

  struct Container {
    bool isDictionary;
    Position position;
    std::size_t first;  // of its values, on the stack that collects them
    std::optional<std::string_view> key = {};
    std::size_t keyOffset = 0;
  };

  void startPlist(std::size_t offset);
  void startKey(std::size_t offset);
  void startValue(XmlElement element, std::size_t offset);
  void startContainer(bool isDictionary, Position position);
  void endLeaf();
  void endContainer();
  platform::PropertyListView value(const Leaf& leaf);
  template <class T>
  T parsed(const Leaf& leaf, std::optional<T> (*parse)(std::string_view), std::string_view what);
  void add(platform::PropertyListView value);

  std::string_view bytes_;
  TextPosition positions_;
  KeyPositions* keys_;
  Builder builder_;
  bool insidePlist_ = false;
  platform::PropertyListView root_;
  std::size_t values_ = 0;
  std::optional<Leaf> leaf_;
  std::string text_;  // of the open leaf
  std::vector<Container> containers_;
  // What the open containers hold so far, the innermost's last.
  std::vector<platform::PropertyListView> items_;
  std::vector<platform::PropertyListEntry> entries_;
};

/// A name that the file chose, as a tag, for a reason: however long it is, the reason stays
/// readable.
std::string tag(std::string_view name);
std::string shortened(std::string_view name);

/// "line 3, column 7".
std::string inWords(Position position);

}  // namespace host::plist
