#include <algorithm>
#include <array>
#include <exception>
#include <expat.h>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/plist/base64.h"
#include "host/plist/builder.h"
#include "host/plist/date_text.h"
#include "host/plist/key_positions.h"
#include "host/plist/limits.h"
#include "host/plist/number_text.h"
#include "host/plist/reader.h"
#include "host/plist/refusal.h"
#include "host/plist/text_position.h"
#include "host/plist/utf8.h"
#include "host/plist/white_space.h"

namespace host::plist {

using platform::PropertyList;
using platform::PropertyListEntry;
using platform::PropertyListView;

namespace {

enum class Element {
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

struct NamedElement {
  std::string_view name;
  Element element;
};

constexpr NamedElement kElements[] = {
    {"key", Element::kKey},     {"string", Element::kString}, {"integer", Element::kInteger},
    {"real", Element::kReal},   {"true", Element::kTrue},     {"false", Element::kFalse},
    {"date", Element::kDate},   {"data", Element::kData},     {"dict", Element::kDict},
    {"array", Element::kArray}, {"plist", Element::kPlist},
};

constexpr std::string_view kPredefinedEntities[] = {"lt", "gt", "amp", "quot", "apos"};

std::string_view nameOf(Element element) {
  return std::ranges::find(kElements, element, &NamedElement::element)->name;
}

/// A name that the file chose, for a reason: however long it is, the reason stays readable.
std::string shortened(std::string_view name) {
  constexpr std::size_t kLongest = 40;
  if (name.size() <= kLongest) return std::string(name);
  std::size_t end = kLongest;
  while ((static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U) --end;
  return std::string(name.substr(0, end)) + "...";
}

std::string tag(std::string_view name) {
  return "<" + shortened(name) + ">";
}
std::string tag(Element element) {
  return tag(nameOf(element));
}

std::string inWords(Position position) {
  return "line " + std::to_string(position.line) + ", column " + std::to_string(position.column);
}

bool saysUtf8(std::string_view encoding) {
  return std::ranges::equal(encoding, std::string_view("utf-8"), [](char c, char expected) {
    return (c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c) == expected;
  });
}

/// Whether the end of what is open may be missing.
bool mayLackEnd(XML_Error error) {
  return error == XML_ERROR_TAG_MISMATCH || error == XML_ERROR_NO_ELEMENTS ||
         error == XML_ERROR_UNCLOSED_TOKEN;
}

struct FreeParser {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<XML_ParserStruct, FreeParser>;

/// Reads one document. The parser calls it for every tag and every run of text; it keeps a stack of
/// the containers that are open and at most one open element that holds text.
class XmlReader {
 public:
  /// `bytes` are UTF-8 without a byte-order mark. `keys` may be null.
  XmlReader(std::string_view bytes, KeyPositions* keys)
      : bytes_(bytes), positions_(bytes), keys_(keys) {}

  PropertyList read() && {
    // The encoding is given, not guessed: else a document could choose another.
    parser_.reset(XML_ParserCreate("UTF-8"));
    if (!parser_) throw std::bad_alloc();
    listen();
    const auto status =
        XML_Parse(parser_.get(), bytes_.data(), static_cast<int>(bytes_.size()), XML_TRUE);
    if (failure_) std::rethrow_exception(failure_);
    if (status != XML_STATUS_OK) {
      const XML_Error error = XML_GetErrorCode(parser_.get());
      if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
      refuseHere(XML_ErrorString(error) + (mayLackEnd(error) ? stillOpen() : ""));
    }
    return builder_.finish(root_);
  }

 private:
  struct Leaf {
    Element element;
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

  void listen() {
    XML_Parser parser = parser_.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(
        parser,
        [](void* self, const char* name, const char** attributes) {
          guarded(self, [&](XmlReader& reader) { reader.start(name, *attributes != nullptr); });
        },
        [](void* self, const char*) { guarded(self, [](XmlReader& reader) { reader.end(); }); });
    XML_SetCharacterDataHandler(parser, [](void* self, const char* text, int length) {
      guarded(self, [&](XmlReader& reader) {
        reader.text({text, static_cast<std::size_t>(length)});
      });
    });
    XML_SetXmlDeclHandler(parser, [](void* self, const char*, const char* encoding, int) {
      guarded(self, [&](XmlReader& reader) { reader.declaration(encoding); });
    });
    XML_SetStartDoctypeDeclHandler(
        parser, [](void* self, const char*, const char*, const char*, int hasInternalSubset) {
          guarded(self, [&](XmlReader& reader) { reader.documentType(hasInternalSubset != 0); });
        });
    // Once a document type names something to fetch, unknown entities are skipped in silence.
    XML_SetSkippedEntityHandler(parser, [](void* self, const char* name, int) {
      guarded(self, [&](XmlReader& reader) { reader.refuseEntity(name); });
    });
  }

  /// Runs `handle` and keeps what it throws, which must not pass through the parser's C code.
  template <class Handle>
  static void guarded(void* self, Handle handle) {
    auto& reader = *static_cast<XmlReader*>(self);
    if (reader.failure_) return;
    try {
      handle(reader);
    } catch (...) {
      reader.failure_ = std::current_exception();
      XML_StopParser(reader.parser_.get(), XML_FALSE);
    }
  }

  void declaration(const char* encoding) {
    if (encoding != nullptr && !saysUtf8(encoding)) refuseHere("the encoding is not UTF-8");
  }

  void documentType(bool hasInternalSubset) {
    if (hasInternalSubset) refuseHere("a document type that declares something");
  }

  [[noreturn]] void refuseEntity(std::string_view name) {
    refuseHere("unknown entity &" + shortened(name) + ";");
  }

  void start(std::string_view name, bool hasAttributes) {
    const auto* known = std::ranges::find(kElements, name, &NamedElement::name);
    if (known == std::end(kElements)) refuseHere("unknown element " + tag(name));
    if (hasAttributes) checkEntitiesOfTag();
    if (leaf_) refuseHere(tag(name) + " inside " + tag(leaf_->element));
    switch (known->element) {
      case Element::kPlist:
        return startPlist();
      case Element::kKey:
        return startKey();
      default:
        return startValue(known->element);
    }
  }

  /// Attributes mean nothing, but the parser does not say when it skips an entity in one.
  void checkEntitiesOfTag() {
    std::string_view tagText =
        bytes_.substr(offset(), static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get())));
    for (auto mark = tagText.find('&'); mark != tagText.npos; mark = tagText.find('&')) {
      tagText.remove_prefix(mark + 1);
      const std::string_view name = tagText.substr(0, tagText.find(';'));
      if (!name.starts_with('#') && std::ranges::count(kPredefinedEntities, name) == 0) {
        refuseEntity(name);
      }
    }
  }

  void startPlist() {
    if (insidePlist_ || !containers_.empty()) refuseHere("<plist> that is not outermost");
    insidePlist_ = true;
  }

  void startKey() {
    if (containers_.empty() || !containers_.back().isDictionary) {
      refuseHere("<key> outside a dictionary");
    }
    if (containers_.back().key) refuseHere("<key> where the value of another belongs");
    leaf_ = {Element::kKey, offset(), {}};
  }

  void startValue(Element element) {
    if (containers_.empty() && root_) refuseHere("a second value at the root");
    if (!containers_.empty() && containers_.back().isDictionary && !containers_.back().key) {
      refuseHere(tag(element) + " without a key");
    }
    if (++values_ > kMaxValues) refuseHere("more than " + std::to_string(kMaxValues) + " values");
    const Position position = positions_.at(offset());
    if (element != Element::kDict && element != Element::kArray) {
      leaf_ = {element, offset(), position};
      return;
    }
    if (containers_.size() == kMaxDepth) {
      refuseHere("containers nest deeper than " + std::to_string(kMaxDepth));
    }
    const bool isDictionary = element == Element::kDict;
    containers_.push_back({isDictionary, position, isDictionary ? entries_.size() : items_.size()});
  }

  void text(std::string_view run) {
    if (leaf_ && leaf_->element != Element::kTrue && leaf_->element != Element::kFalse) {
      text_ += run;
      return;
    }
    const auto first = run.find_first_not_of(kWhiteSpace);
    if (first != run.npos) refuseAt(offset() + first, "text where none belongs");
  }

  /// The parser has seen to it that what ends is what was begun last.
  void end() {
    if (leaf_) return endLeaf();
    if (!containers_.empty()) return endContainer();
    if (!root_) refuseHere("<plist> without a value");
  }

  void endLeaf() {
    const Leaf leaf = *leaf_;
    leaf_.reset();
    if (leaf.element == Element::kKey) {
      const std::string_view key = builder_.keep(text_);
      containers_.back().key = key;
      containers_.back().keyOffset = leaf.offset;
      if (keys_) keys_->add(key, positions_.at(leaf.offset));
    } else {
      add(value(leaf));
    }
    text_.clear();
  }

  PropertyListView value(const Leaf& leaf) {
    switch (leaf.element) {
      case Element::kInteger:
        return builder_.integer(parsed(leaf, parseInteger, "an integer of 64 bits"), leaf.position);
      case Element::kReal:
        return builder_.real(parsed(leaf, parseReal, "a finite number"), leaf.position);
      case Element::kDate:
        return builder_.date(parsed(leaf, parseDate, "a date like 2013-09-18T00:00:00Z"),
                             leaf.position);
      case Element::kData:
        return builder_.data(parsed(leaf, decodeBase64, "base64"), leaf.position);
      case Element::kTrue:
      case Element::kFalse:
        return builder_.boolean(leaf.element == Element::kTrue, leaf.position);
      default:
        return builder_.string(text_, leaf.position);
    }
  }

  /// What `parse` makes of the text of `leaf`, which should be `what`.
  template <class T>
  T parsed(const Leaf& leaf, std::optional<T> (*parse)(std::string_view), std::string_view what) {
    auto result = parse(text_);
    if (!result) refuseAt(leaf.offset, tag(leaf.element) + " does not hold " + std::string(what));
    return *std::move(result);
  }

  void endContainer() {
    const Container container = containers_.back();
    if (container.key) refuseAt(container.keyOffset, "<key> without a value");
    containers_.pop_back();
    PropertyListView value;
    if (container.isDictionary) {
      const auto written = Entries(entries_).subspan(container.first);
      value = builder_.dictionary(written, container.position);
      if (keys_) keys_->addRepeated(written, value.entries());
      entries_.resize(container.first);
    } else {
      value = builder_.array(Items(items_).subspan(container.first), container.position);
      items_.resize(container.first);
    }
    add(value);
  }

  void add(PropertyListView value) {
    if (containers_.empty()) {
      root_ = value;
    } else if (!containers_.back().isDictionary) {
      items_.push_back(value);
    } else {
      entries_.push_back({*containers_.back().key, value});
      containers_.back().key.reset();
    }
  }

  /// What is open, for a reason: its end may be what is missing.
  std::string stillOpen() const {
    if (!leaf_ && containers_.empty()) return "";
    const bool isDictionary = !leaf_ && containers_.back().isDictionary;
    const Element element = leaf_          ? leaf_->element
                            : isDictionary ? Element::kDict
                                           : Element::kArray;
    const Position begin =
        leaf_ ? TextPosition(bytes_).at(leaf_->offset) : containers_.back().position;
    return "; the " + tag(element) + " of line " + std::to_string(begin.line) + " is still open";
  }

  /// Where in the document the tag or text begins that the parser is at.
  std::size_t offset() const {
    return static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
  }

  [[noreturn]] void refuseHere(std::string_view why) { refuseAt(offset(), why); }

  [[noreturn]] void refuseAt(std::size_t offset, std::string_view why) {
    throw Refusal{inWords(positions_.at(std::min(offset, bytes_.size()))) + ": " +
                  std::string(why)};
  }

  std::string_view bytes_;
  TextPosition positions_;
  KeyPositions* keys_;
  Parser parser_;
  Builder builder_;
  std::exception_ptr failure_;
  bool insidePlist_ = false;
  PropertyListView root_;
  std::size_t values_ = 0;
  std::optional<Leaf> leaf_;
  std::string text_;  // of the open leaf
  std::vector<Container> containers_;
  // What the open containers hold so far, the innermost's last.
  std::vector<PropertyListView> items_;
  std::vector<PropertyListEntry> entries_;
};

std::string_view withoutByteOrderMark(std::string_view bytes) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kMark)) bytes.remove_prefix(kMark.size());
  return bytes;
}

Reading readDocument(std::string_view bytes, KeyPositions* keys) {
  if (bytes.size() > kMaxBytes) return {{}, whyTooLong()};
  bytes = withoutByteOrderMark(bytes);
  if (const auto invalid = findInvalidUtf8(bytes); invalid != bytes.npos) {
    return {{}, inWords(TextPosition(bytes).at(invalid)) + ": a byte that is no UTF-8"};
  }
  try {
    return {XmlReader(bytes, keys).read(), {}};
  } catch (Refusal& refusal) {
    return {{}, std::move(refusal.reason)};
  }
}

}  // namespace

Reading readXml(std::string_view bytes) {
  return readDocument(bytes, nullptr);
}

Reading readXml(std::string_view bytes, KeyPositions& keys) {
  return readDocument(bytes, &keys);
}

}  // namespace host::plist
