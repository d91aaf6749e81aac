#include "convert/json_writer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <variant>

#include "convert/exact_date.h"
#include "convert/json_notation.h"
#include "host/plist/base64.h"
#include "host/plist/node.h"
#include "host/plist/number_text.h"
#include "host/plist/utf8.h"

namespace tools::convert {

using host::plist::Data;
using host::plist::Date;
using host::plist::Entries;
using host::plist::Items;
using platform::PropertyListView;

namespace {

/// As many bytes as an array or object on one line may take.
constexpr std::size_t kLineWidth = 88;

/// A character that is no part of a readable string; one that JSON can do without escaping is sent
/// through as it is.
void appendEscape(std::string& json, char32_t c) {
  constexpr struct {
    char32_t character;
    std::string_view escape;
  } kShort[] = {{'"', "\\\""}, {'\\', "\\\\"}, {'\n', "\\n"}, {'\r', "\\r"}, {'\t', "\\t"}};
  for (const auto& [character, escape] : kShort) {
    if (character == c) {
      json += escape;
      return;
    }
  }
  std::array<char, 8> hexadecimal{};
  std::snprintf(hexadecimal.data(), hexadecimal.size(), "\\u%04x", static_cast<unsigned>(c));
  json += hexadecimal.data();
}

/// Whether `c` is escaped: what JSON asks for, and the control characters that a terminal obeys.
constexpr bool needsEscape(char32_t c) {
  return c < 0x20 || c == '"' || c == '\\' || (c >= 0x7F && c < 0xA0);
}

/// Writes one value; deep lists nest it no deeper than their reader allowed.
class JsonWriter {
 public:
  /// Whether what is written must stay on one line: then it gives up where the line is full.
  explicit JsonWriter(bool oneLine) : oneLine_(oneLine) {}

  bool write(PropertyListView view) {
    std::visit([&](const auto& value) { append(value); }, view.get()->value);
    return !isFull();
  }

  std::string json;

 private:
  bool isFull() const { return oneLine_ && (tooLong_ || json.size() > kLineWidth); }

  void append(std::monostate) {}
  void append(bool value) { json += value ? "true" : "false"; }
  void append(std::int64_t value) { host::plist::appendInteger(json, value); }
  void append(double value) {
    const std::size_t start = json.size();
    host::plist::appendReal(json, value);
    if (json.find_first_of(".e", start) == json.npos) json += ".0";
  }
  void append(std::string_view text) {
    json += '"';
    appendCharacters(text);
    json += '"';
  }
  void appendCharacters(std::string_view text) {
    while (!text.empty() && !isFull()) {
      const auto [character, length, valid] = host::plist::firstUtf8Character(text);
      if (needsEscape(character)) {
        appendEscape(json, character);
      } else {
        json += text.substr(0, length);
      }
      text.remove_prefix(length);
    }
  }
  void append(Date date) {
    note(kDateMember);
    appendExactDate(json, date);
    json += "\"}";
  }
  void append(Data bytes) {
    note(kDataMember);
    // Not even begun where it can't fit: every line that is tried would hold all of it.
    tooLong_ = bytes.size() > kLineWidth;
    if (!isFull()) host::plist::appendBase64(json, bytes);
    json += "\"}";
  }
  void append(Items items) {
    container('[', ']', items, [&](PropertyListView item) { append(item); });
  }
  void append(Entries entries) {
    container('{', '}', entries, [&](const platform::PropertyListEntry& entry) {
      const bool escaped = entries.size() == 1 && looksLikeNotation(entry.key);
      json += escaped ? "\"$" : "\"";
      appendCharacters(entry.key);
      json += "\": ";
      append(entry.value);
    });
  }

  /// A value inside a container: on what is left of the line when it fits.
  void append(PropertyListView view) {
    const bool holdsMore = !view.items().empty() || !view.entries().empty();
    JsonWriter line(true);
    if (!oneLine_ && holdsMore && line.write(view)) {
      json += line.json;
    } else {
      write(view);
    }
  }

  void note(std::string_view name) { json.append("{\"").append(name).append("\": \""); }

  template <class Parts, class AppendPart>
  void container(char opening, char closing, const Parts& parts, AppendPart appendPart) {
    json += opening;
    ++depth_;
    for (const auto& part : parts) {
      if (&part != &parts.front()) json += oneLine_ ? ", " : ",";
      if (!oneLine_) startLine();
      appendPart(part);
      if (isFull()) return;
    }
    --depth_;
    if (!oneLine_ && !parts.empty()) startLine();
    json += closing;
  }

  void startLine() { json.append("\n").append(2 * std::min(depth_, kDeepestIndentation), ' '); }

  /// Beyond it indentation would be most of the text.
  static constexpr std::size_t kDeepestIndentation = 32;

  bool oneLine_;
  bool tooLong_ = false;
  std::size_t depth_ = 0;
};

}  // namespace

std::string writeJson(PropertyListView root) {
  JsonWriter writer(false);
  writer.write(root);
  return writer.json + "\n";
}

}  // namespace tools::convert
