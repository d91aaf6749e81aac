#include "host/plist/base64.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "host/plist/white_space.h"

namespace host::plist {

namespace {

constexpr std::string_view kDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
static_assert(kDigits.size() == 64);

constexpr std::uint8_t kNoDigit = 0xFF;

/// The value of each character as a digit.
constexpr auto kValues = [] {
  std::array<std::uint8_t, 256> values{};
  values.fill(kNoDigit);
  for (std::size_t i = 0; i < kDigits.size(); ++i) {
    values[static_cast<unsigned char>(kDigits[i])] = static_cast<std::uint8_t>(i);
  }
  return values;
}();

}  // namespace

std::optional<std::vector<std::byte>> decodeBase64(std::string_view text) {
  std::vector<std::byte> bytes;
  bytes.reserve(text.size() / 4 * 3);
  std::uint32_t bits = 0;  // read and not yet written, at the low end
  unsigned pending = 0;    // how many of them
  std::size_t digits = 0;
  std::size_t padding = 0;
  for (const char c : text) {
    if (isWhiteSpace(c)) continue;
    if (c == '=') {
      ++padding;
      continue;
    }
    const std::uint8_t value = kValues[static_cast<unsigned char>(c)];
    if (value == kNoDigit || padding != 0) return std::nullopt;
    bits = bits << 6U | value;
    ++digits;
    pending += 6;
    if (pending < 8) continue;
    pending -= 8;
    bytes.push_back(static_cast<std::byte>(bits >> pending));
    bits &= (1U << pending) - 1;
  }
  const bool whole = (digits + padding) % 4 == 0 && padding <= 2 && pending != 6;
  if (!whole || bits != 0) return std::nullopt;
  return bytes;
}

void appendBase64(std::string& text, Data bytes) {
  text.reserve(text.size() + (bytes.size() + 2) / 3 * 4);
  for (; !bytes.empty(); bytes = bytes.subspan(std::min<std::size_t>(3, bytes.size()))) {
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      group = group << 8U | (i < bytes.size() ? std::to_integer<std::uint32_t>(bytes[i]) : 0);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      text += i <= bytes.size() ? kDigits[group >> (18 - 6 * i) & 0x3FU] : '=';
    }
  }
}

}  // namespace host::plist
