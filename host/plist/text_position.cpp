#include "host/plist/text_position.h"

#include <algorithm>
#include <cstdint>

namespace host::plist {

Position TextPosition::at(std::size_t offset) {
  if (offset < offset_) {
    offset_ = 0;
    position_ = {1, 1};
  }
  std::string_view passed = text_.substr(offset_, offset - offset_);
  for (auto end = passed.find('\n'); end != passed.npos; end = passed.find('\n')) {
    passed.remove_prefix(end + 1);
    position_ = {position_.line + 1, 1};
  }
  const auto startsCharacter = [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
  };
  position_.column += static_cast<std::uint32_t>(std::ranges::count_if(passed, startsCharacter));
  offset_ = offset;
  return position_;
}

}  // namespace host::plist
