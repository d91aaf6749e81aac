#include "host/plist/text_position.h"

#include <algorithm>
#include <cstdint>

namespace host::plist {

std::size_t TextPosition::nextLine(std::size_t from, std::size_t to) const {
  const std::string_view before = text_.substr(0, to);
  for (;;) {
    // Nearly all files have line feeds alone, which are found faster.
    const auto end = hasReturns_ ? before.find_first_of("\r\n", from) : before.find('\n', from);
    if (end == before.npos) return end;
    const bool isHalf = text_[end] == '\r' && end + 1 < text_.size() && text_[end + 1] == '\n';
    if (!isHalf) return end + 1;
    from = end + 1;
  }
}

Position TextPosition::at(std::size_t offset) {
  if (offset < offset_) {
    offset_ = 0;
    position_ = {1, 1};
  }
  std::size_t start = offset_;
  for (auto next = nextLine(start, offset); next != text_.npos; next = nextLine(start, offset)) {
    start = next;
    position_ = {position_.line + 1, 1};
  }
  const std::string_view passed = text_.substr(start, offset - start);
  const auto startsCharacter = [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
  };
  position_.column += static_cast<std::uint32_t>(std::ranges::count_if(passed, startsCharacter));
  offset_ = offset;
  return position_;
}

}  // namespace host::plist
