#include "scenario/pointer.h"

#include <utility>

namespace tools::scenario {

std::string pointerTo(std::string pointer, std::string_view member) {
  pointer += '/';
  for (const char c : member) {
    if (c == '~') {
      pointer += "~0";
    } else if (c == '/') {
      pointer += "~1";
    } else {
      pointer += c;
    }
  }
  return pointer;
}

std::string pointerTo(std::string pointer, std::size_t index) {
  return std::move(pointer) + '/' + std::to_string(index);
}

std::string printable(std::string_view pointer) {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string text;
  for (const char c : pointer) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte != 0x7F) {
      text += c;
    } else {
      text += {'\\', 'u', '0', '0', kHex[byte >> 4U], kHex[byte & 0xFU]};
    }
  }
  return text;
}

}  // namespace tools::scenario
