#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

#include "host/plist/utf8.h"

namespace fuzz {

/// Makes decisions of bytes, taken off the front one after the other; where there are none left,
/// all are zero. So a short input is a small case, and bytes that are changed change one decision.
class ByteSource {
 public:
  explicit ByteSource(std::string_view bytes) : rest_(bytes) {}

  bool empty() const { return rest_.empty(); }

  std::uint8_t byte() {
    if (rest_.empty()) return 0;
    const auto first = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return first;
  }
  bool flag() { return (byte() & 1U) != 0; }
  /// Of 0 to `count` - 1; `count` is 1 to 256.
  std::size_t below(std::size_t count) { return byte() % count; }
  /// True once in `count` times.
  bool rarely(std::size_t count) { return below(count) == count - 1; }

  /// Mostly a number of -8 to 119, else any.
  std::int32_t integer() {
    const std::uint8_t first = byte();
    if (first < 128) return first - 8;
    std::uint32_t number = 0;
    for (int i = 0; i < 4; ++i) number = number << 8U | byte();
    return static_cast<std::int32_t>(number);
  }

  template <class Table>
  const auto& pick(const Table& table) {
    return table[below(std::size(table))];
  }

  /// As many bytes as the next one says, at most what is left.
  std::string_view run() { return take(byte()); }
  std::string_view take(std::size_t size) {
    const std::string_view taken = rest_.substr(0, size);
    rest_.remove_prefix(taken.size());
    return taken;
  }
  std::string_view all() { return take(rest_.size()); }

  /// A run as text: what is no UTF-8 is replaced, as no property list could hold it.
  std::string text() {
    std::string text;
    for (std::string_view bytes = run(); !bytes.empty();) {
      const auto character = host::plist::firstUtf8Character(bytes);
      host::plist::appendUtf8(text, character.codePoint);
      bytes.remove_prefix(character.length);
    }
    return text;
  }

 private:
  std::string_view rest_;
};

}  // namespace fuzz
