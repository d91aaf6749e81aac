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

#include "host/plist/key_positions.h"
#include "host/plist/limits.h"
#include "host/plist/plain_xml.h"
#include "host/plist/reader.h"
#include "host/plist/refusal.h"
#include "host/plist/text_position.h"
#include "host/plist/utf8.h"
#include "host/plist/xml_values.h"

namespace host::plist {

using platform::PropertyList;

namespace {

constexpr std::string_view kPredefinedEntities[] = {"lt", "gt", "amp", "quot", "apos"};

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

/// Reads one document of any form. The parser calls it for every tag and every run of text.
class XmlReader {
 public:
  /// `bytes` are UTF-8 without a byte-order mark. `keys` may be null.
  XmlReader(std::string_view bytes, KeyPositions* keys) : bytes_(bytes), values_(bytes, keys) {}

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
      refuseHere(XML_ErrorString(error) + (mayLackEnd(error) ? values_.stillOpen() : ""));
    }
    return std::move(values_).finish();
  }

 private:
  void listen() {
    XML_Parser parser = parser_.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(
        parser,
        [](void* self, const char* name, const char** attributes) {
          guarded(self, [&](XmlReader& reader) { reader.start(name, *attributes != nullptr); });
        },
        [](void* self, const char*) {
          // The parser has seen to it that what ends is what was begun last.
          guarded(self, [](XmlReader& reader) { reader.values_.end(reader.offset()); });
        });
    XML_SetCharacterDataHandler(parser, [](void* self, const char* text, int length) {
      guarded(self, [&](XmlReader& reader) {
        reader.values_.text({text, static_cast<std::size_t>(length)}, reader.offset());
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
    const auto element = xmlElement(name);
    if (!element) refuseHere("unknown element " + tag(name));
    if (hasAttributes) checkEntitiesOfTag();
    values_.start(*element, offset());
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

  /// Where in the document the tag or text begins that the parser is at.
  std::size_t offset() const {
    return static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
  }

  [[noreturn]] void refuseHere(std::string_view why) { values_.refuse(offset(), why); }

  std::string_view bytes_;
  XmlValues values_;
  Parser parser_;
  std::exception_ptr failure_;
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
  // Nobody waits for a document in which somebody looks for the places of keys.
  if (keys == nullptr) {
    if (PropertyList list = readPlainXml(bytes)) return {std::move(list), {}};
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
