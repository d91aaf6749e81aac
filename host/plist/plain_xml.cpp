#include "host/plist/plain_xml.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include "host/plist/refusal.h"
#include "host/plist/white_space.h"
#include "host/plist/xml_values.h"

namespace host::plist {

using platform::PropertyList;

namespace {

/// Thrown where a document is not of the plain form.
struct NotPlain {};

constexpr std::string_view kDeclaration = R"(<?xml version="1.0" encoding="UTF-8"?>)";

struct Entity {
  std::string_view written;
  std::string_view text;
};

constexpr Entity kEntities[] = {
    {"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}, {"&quot;", "\""}, {"&apos;", "'"}};

/// Whether all of `bytes` may stand for itself in XML: no control characters, nothing that is read
/// as another character, and no two code points that are none. Looks at single bytes only, so that
/// it takes no time.
bool holdsPlainCharacters(std::string_view bytes) {
  constexpr std::string_view kNoCharacters = "\xEF\xBF";  // and one of two bytes behind them
  const auto isControl = [](char c) {
    return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n';
  };
  std::size_t controls = 0;
  for (const char c : bytes) controls += isControl(c) ? 1U : 0U;
  return controls == 0 && bytes.find(kNoCharacters) == std::string_view::npos;
}

class PlainReader {
 public:
  explicit PlainReader(std::string_view bytes) : bytes_(bytes), values_(bytes, nullptr) {}

  PropertyList read() && {
    take(kDeclaration);
    skipWhiteSpace();
    if (take("<!DOCTYPE plist PUBLIC ")) skipDocumentType();
    for (;;) {
      open_.empty() ? skipWhiteSpace() : readText();
      if (place_ == bytes_.size()) break;
      take("<!--") ? skipComment() : readTag();
    }
    return std::move(values_).finish();
  }

 private:
  static void require(bool plain) {
    if (!plain) throw NotPlain();
  }

  std::string_view rest() const { return {bytes_.data() + place_, bytes_.size() - place_}; }

  bool take(std::string_view text) {
    if (!rest().starts_with(text)) return false;
    place_ += text.size();
    return true;
  }

  /// The offset of the next `mark`, which there must be.
  std::size_t find(char mark) const {
    const void* const found = std::memchr(bytes_.data() + place_, mark, bytes_.size() - place_);
    require(found != nullptr);
    return static_cast<std::size_t>(static_cast<const char*>(found) - bytes_.data());
  }

  void skipWhiteSpace() {
    while (place_ < bytes_.size() && isWhiteSpace(bytes_[place_])) ++place_;
  }

  void skipComment() {
    const std::size_t end = bytes_.find("--", place_);
    require(end != std::string_view::npos);
    place_ = end + 2;
    require(take(">"));
  }

  void skipQuoted() {
    require(take("\""));
    const std::size_t end = find('"');
    const auto isPlain = [](char c) {
      return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
             std::string_view(" -/.:").find(c) != std::string_view::npos;
    };
    require(std::ranges::all_of(bytes_.substr(place_, end - place_), isPlain));
    place_ = end + 1;
  }

  void skipDocumentType() {
    skipQuoted();
    require(take(" "));
    skipQuoted();
    require(take(">"));
  }

  void readTag() {
    const std::size_t offset = place_;
    require(take("<"));
    if (take("/")) return readEndTag(offset);
    // One document, one outermost element.
    require(!open_.empty() || !hasRoot_);
    hasRoot_ = true;
    const std::size_t end = find('>');
    const bool isEmpty = bytes_[end - 1] == '/';
    std::string_view name = bytes_.substr(place_, end - place_ - (isEmpty ? 1 : 0));
    if (name == R"(plist version="1.0")") name = "plist";
    const auto element = xmlElement(name);
    require(element.has_value());
    values_.start(*element, offset);
    place_ = end + 1;
    if (isEmpty) {
      values_.end(offset);
    } else {
      open_.push_back(*element);
    }
  }

  void readEndTag(std::size_t offset) {
    require(!open_.empty() && take(nameOf(open_.back())) && take(">"));
    open_.pop_back();
    values_.end(offset);
  }

  /// Reads the text up to the next tag.
  void readText() {
    const std::size_t end = find('<');
    std::string_view run = bytes_.substr(place_, end - place_);
    if (run.empty()) return;
    require(run.find("]]>") == std::string_view::npos);
    for (auto mark = run.find('&'); mark != run.npos; mark = run.find('&')) {
      values_.text(run.substr(0, mark), place_);
      run.remove_prefix(mark);
      const auto* const entity = std::ranges::find_if(
          kEntities, [&](const Entity& each) { return run.starts_with(each.written); });
      require(entity != std::end(kEntities));
      values_.text(entity->text, place_);
      run.remove_prefix(entity->written.size());
    }
    values_.text(run, place_);
    place_ = end;
  }

  std::string_view bytes_;
  XmlValues values_;
  std::size_t place_ = 0;
  bool hasRoot_ = false;
  std::vector<XmlElement> open_;
};

}  // namespace

PropertyList readPlainXml(std::string_view bytes) {
  if (!holdsPlainCharacters(bytes)) return {};
  try {
    return PlainReader(bytes).read();
  } catch (const NotPlain&) {
    return {};
  } catch (const Refusal&) {
    return {};
  }
}

}  // namespace host::plist
