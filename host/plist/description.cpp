#include "host/plist/description.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "host/plist/date_text.h"
#include "host/plist/limits.h"
#include "host/plist/node.h"
#include "host/plist/number_text.h"
#include "host/plist/utf8.h"

namespace host::plist {

using platform::PropertyListView;

namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

constexpr bool isControl(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

void appendControl(std::string& line, char32_t c) {
  switch (c) {
    case '\n':
      line += "\\n";
      break;
    case '\r':
      line += "\\r";
      break;
    case '\t':
      line += "\\t";
      break;
    default:
      line.append("\\u00").append({kHexDigits[c >> 4U], kHexDigits[c & 0xFU]});
  }
}

/// At most `longest` bytes of `text`, cut between two characters.
std::string_view startOf(std::string_view text, std::size_t longest) {
  if (text.size() <= longest) return text;
  while (longest > 0 && (static_cast<unsigned char>(text[longest]) & 0xC0U) == 0x80U) --longest;
  return text.substr(0, longest);
}

/// Appends `text` with its control characters and those in `special` escaped.
void appendEscaped(std::string& line, std::string_view text, std::string_view special) {
  while (!text.empty()) {
    const Utf8Character c = firstUtf8Character(text);
    if (isControl(c.codePoint)) {
      appendControl(line, c.codePoint);
    } else if (!c.valid) {
      appendUtf8(line, c.codePoint);
    } else {
      if (c.length == 1 && special.find(text.front()) != special.npos) line += '\\';
      line += text.substr(0, c.length);
    }
    text.remove_prefix(c.length);
  }
}

constexpr bool isBare(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' ||
         c == '_' || c == '/' || c == '$' || c == ':' || c == '-';
}

/// Appends a text the way it stands inside a collection.
void appendElementText(std::string& line, std::string_view text) {
  if (!text.empty() && std::ranges::all_of(text, isBare)) {
    line += text;
    return;
  }
  line += '"';
  appendEscaped(line, text, "\"\\");
  line += '"';
}

void appendHex(std::string& line, Data bytes) {
  line += '<';
  for (const std::byte byte : bytes) {
    const auto value = std::to_integer<unsigned>(byte);
    line.append({kHexDigits[value >> 4U], kHexDigits[value & 0xFU]});
  }
  line += '>';
}

/// Writes one value, keeping the collections it is inside of on a stack of its own: how deep they
/// nest must not decide how much of the thread's stack is used. Stops where the description ends: a
/// value may stand for as much memory as a whole list.
class Describer {
 public:
  std::string describe(PropertyListView root) && {
    if (const auto* text = payload<std::string_view>(root)) {
      return inOneLine(*text, kMaxDescribedBytes);
    }
    begin(root);
    while (!open_.empty() && line_.size() <= kMaxDescribedBytes) advance();
    if (line_.size() <= kMaxDescribedBytes) return std::move(line_);
    return std::string(startOf(line_, kMaxDescribedBytes)) + "...";
  }

 private:
  struct Open {
    PropertyListView collection;
    std::size_t next = 0;
  };

  /// Writes a value that holds no others; opens a collection.
  void begin(PropertyListView view) {
    if (!view) {
      line_ += "(null)";
      return;
    }
    std::visit([&](const auto& value) { append(view, value); }, view.get()->value);
  }

  void append(PropertyListView, std::monostate) { line_ += "(null)"; }
  void append(PropertyListView, bool value) { line_ += value ? '1' : '0'; }
  void append(PropertyListView, std::int64_t value) { appendInteger(line_, value); }
  void append(PropertyListView, double value) { appendReal(line_, value); }
  void append(PropertyListView, std::string_view text) { appendText(text); }
  void append(PropertyListView, Date date) { appendLogDate(line_, date); }
  void append(PropertyListView, Data bytes) {
    appendHex(line_, bytes.first(std::min(bytes.size(), kMaxDescribedBytes)));
  }
  void append(PropertyListView view, Items) {
    line_ += '(';
    open_.push_back({view});
  }
  void append(PropertyListView view, Entries) {
    line_ += '{';
    open_.push_back({view});
  }

  // A character more than fits, so that what is cut off is noticed.
  void appendText(std::string_view text) {
    constexpr std::size_t kLongestCharacter = 4;
    appendElementText(line_, startOf(text, kMaxDescribedBytes + kLongestCharacter));
  }

  /// Writes the next element of the innermost collection, or closes it.
  void advance() {
    Open& open = open_.back();
    const std::size_t index = open.next++;
    open.collection.isArray() ? advanceArray(open.collection.items(), index)
                              : advanceDictionary(open.collection.entries(), index);
  }

  void advanceArray(Items items, std::size_t index) {
    if (index == items.size()) return close(")");
    if (index > 0) line_ += ", ";
    begin(items[index]);
  }

  void advanceDictionary(Entries entries, std::size_t index) {
    if (index > 0) line_ += "; ";
    if (index == entries.size()) return close("}");
    appendText(entries[index].key);
    line_ += " = ";
    begin(entries[index].value);
  }

  void close(std::string_view bracket) {
    line_ += bracket;
    open_.pop_back();
  }

  std::string line_;
  std::vector<Open> open_;
};

}  // namespace

std::string describe(PropertyListView view) {
  return Describer().describe(view);
}

std::string escapeControls(std::string_view text) {
  std::string line;
  appendEscaped(line, text, "");
  return line;
}

std::string inOneLine(std::string_view text, std::size_t longest) {
  std::string line = escapeControls(startOf(text, longest));
  if (text.size() > longest) line += "...";
  return line;
}

}  // namespace host::plist
