#include "scenario/notation.h"

#include <charconv>
#include <string>
#include <utility>

#include "host/plist/date_text.h"

namespace tools::scenario {
namespace {

/// The digits of `text`, all of it, in `base`: no sign, no space.
template <class T>
std::optional<T> digits(std::string_view text, int base = 10) {
  if (text.starts_with('-')) return std::nullopt;
  T value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

constexpr std::optional<unsigned> base64Digit(char c) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const auto value = kDigits.find(c);
  if (value == kDigits.npos) return std::nullopt;
  return static_cast<unsigned>(value);
}

}  // namespace

std::optional<std::vector<std::byte>> fromBase64(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  for (int padding = 0; padding < 2 && text.ends_with('='); ++padding) text.remove_suffix(1);
  std::vector<std::byte> bytes;
  bytes.reserve(text.size() / 4 * 3 + 2);
  unsigned pending = 0;
  int pendingBits = 0;
  for (const char c : text) {
    const auto digit = base64Digit(c);
    if (!digit) return std::nullopt;
    pending = (pending << 6 | *digit) & 0xFFFU;
    pendingBits += 6;
    if (pendingBits < 8) continue;
    pendingBits -= 8;
    bytes.push_back(static_cast<std::byte>(pending >> pendingBits));
  }
  return bytes;
}

std::optional<std::chrono::sys_seconds> fromDate(std::string_view text) {
  // Property lists allow white space around a date, scenarios don't.
  constexpr std::string_view kForm = "0000-00-00T00:00:00Z";
  const auto date = text.size() == kForm.size() ? host::plist::parseDate(text) : std::nullopt;
  if (!date) return std::nullopt;
  return std::chrono::sys_seconds(std::chrono::seconds(static_cast<std::int64_t>(date->seconds)));
}

std::optional<Rgba> fromColor(std::string_view text) {
  if (text.size() != 9 || text[0] != '#') return std::nullopt;
  const auto packed = digits<std::uint32_t>(text.substr(1), 16);
  if (!packed) return std::nullopt;
  const auto component = [&](int shift) { return static_cast<std::uint8_t>(*packed >> shift); };
  return Rgba{component(24), component(16), component(8), component(0)};
}

bool isDevicePath(std::string_view text) {
  return text.starts_with('/') && text.find('\0') == text.npos;
}

std::optional<std::int32_t> fromDecimal(std::string_view text) {
  const bool negative = text.starts_with('-');
  const auto magnitude = digits<std::int64_t>(text.substr(negative ? 1 : 0));
  if (!magnitude) return std::nullopt;
  const auto value = negative ? -*magnitude : *magnitude;
  if (!std::in_range<std::int32_t>(value) || std::to_string(value) != text) return std::nullopt;
  return static_cast<std::int32_t>(value);
}

}  // namespace tools::scenario
