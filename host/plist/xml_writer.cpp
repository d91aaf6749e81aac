#include <algorithm>
#include <string_view>
#include <variant>
#include <vector>

#include "host/plist/base64.h"
#include "host/plist/date_text.h"
#include "host/plist/node.h"
#include "host/plist/number_text.h"
#include "host/plist/utf8.h"
#include "host/plist/writer.h"

namespace host::plist {

using platform::PropertyListView;

namespace {

// Past it lines stay where they are: a million values nested deep are not to become gigabytes of
// indentation.
constexpr std::size_t kDeepestIndentation = 32;

/// What stands for `c` in the text of an element; `c` itself when that may stand there.
constexpr std::string_view escapeOf(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '\r':  // a plain one would be read back as a line feed
      return "&#13;";
    default:
      return {};
  }
}

constexpr bool isPlainAscii(char c) {
  return (c >= 0x20 || c == '\t' || c == '\n') && static_cast<unsigned char>(c) < 0x80U &&
         escapeOf(c).empty();
}

/// Whether XML has a way to write `c`.
constexpr bool isExpressible(char32_t c) {
  return (c >= 0x20 || c == '\t' || c == '\n' || c == '\r') && c != 0xFFFE && c != 0xFFFF;
}

void appendText(std::string& xml, std::string_view text) {
  while (!text.empty()) {
    const auto end = std::ranges::find_if_not(text, isPlainAscii);
    const auto plain = static_cast<std::size_t>(end - text.begin());
    xml += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) break;
    const Utf8Character c = firstUtf8Character(text);
    if (const std::string_view escape = escapeOf(text.front()); !escape.empty()) {
      xml += escape;
    } else {
      appendUtf8(xml, isExpressible(c.codePoint) ? c.codePoint : kReplacementCharacter);
    }
    text.remove_prefix(c.length);
  }
}

/// Writes one document; keeps the containers that are open on a stack of its own, so that how deep
/// they nest does not matter.
class XmlWriter {
 public:
  std::string write(PropertyListView root) && {
    xml_ =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<plist version=\"1.0\">\n";
    begin(root);
    while (!open_.empty()) advance();
    xml_ += "</plist>\n";
    return std::move(xml_);
  }

 private:
  struct Open {
    PropertyListView container;
    std::size_t next = 0;
  };

  void begin(PropertyListView view) {
    indent();
    std::visit([&](const auto& value) { append(view, value); }, view.get()->value);
    xml_ += '\n';
  }

  void append(PropertyListView, std::monostate) {}
  void append(PropertyListView, bool value) { xml_ += value ? "<true/>" : "<false/>"; }
  void append(PropertyListView, std::string_view text) { appendString("string", text); }
  void append(PropertyListView, std::int64_t value) {
    element("integer", [&] { appendInteger(xml_, value); });
  }
  void append(PropertyListView, double value) {
    element("real", [&] { appendReal(xml_, value); });
  }
  void append(PropertyListView, Date date) {
    element("date", [&] { appendIsoDate(xml_, date); });
  }
  void append(PropertyListView, Data bytes) {
    element("data", [&] { appendBase64(xml_, bytes); });
  }
  void append(PropertyListView view, Items items) { open(view, "array", items.empty()); }
  void append(PropertyListView view, Entries entries) { open(view, "dict", entries.empty()); }

  void appendString(std::string_view name, std::string_view text) {
    element(name, [&] { appendText(xml_, text); });
  }

  template <class Content>
  void element(std::string_view name, Content appendContent) {
    xml_.append("<").append(name).append(">");
    appendContent();
    xml_.append("</").append(name).append(">");
  }

  void open(PropertyListView view, std::string_view name, bool empty) {
    xml_.append("<").append(name).append(empty ? "/>" : ">");
    if (!empty) open_.push_back({view});
  }

  /// Writes the next value of the innermost container, or closes it.
  void advance() {
    Open& open = open_.back();
    const std::size_t index = open.next++;
    if (open.container.isArray()) {
      const Items items = open.container.items();
      if (index == items.size()) return close("array");
      begin(items[index]);
    } else {
      const Entries entries = open.container.entries();
      if (index == entries.size()) return close("dict");
      indent();
      appendString("key", entries[index].key);
      xml_ += '\n';
      begin(entries[index].value);
    }
  }

  void close(std::string_view name) {
    open_.pop_back();
    indent();
    xml_.append("</").append(name).append(">\n");
  }

  void indent() { xml_.append(std::min(open_.size(), kDeepestIndentation), '\t'); }

  std::string xml_;
  std::vector<Open> open_;
};

}  // namespace

std::string writeXml(PropertyListView root) {
  return root ? XmlWriter().write(root) : "";
}

}  // namespace host::plist
