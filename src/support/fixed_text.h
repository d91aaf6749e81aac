#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace prismal {

/// A short text put together in place, without an allocation. What does not fit is cut off.
template <std::size_t kCapacity>
class FixedText {
 public:
  FixedText& operator<<(std::string_view text) {
    const std::size_t length = std::min(text.size(), kCapacity - size_);
    std::copy_n(text.data(), length, characters_.data() + size_);
    size_ += length;
    return *this;
  }
  FixedText& operator<<(char c) {
    if (size_ < kCapacity) characters_[size_++] = c;
    return *this;
  }
  /// Appends a number in decimal.
  FixedText& operator<<(std::int64_t number) { return appendNumber(number); }
  FixedText& operator<<(std::uint64_t number) { return appendNumber(number); }

  std::string_view view() const { return {characters_.data(), size_}; }

 private:
  template <class Number>
  FixedText& appendNumber(Number number) {
    // What most numbers here are.
    if (number >= 0 && number < 10) return *this << static_cast<char>('0' + number);
    char* const end = characters_.data() + kCapacity;
    const auto [next, error] = std::to_chars(characters_.data() + size_, end, number);
    if (error == std::errc()) size_ = static_cast<std::size_t>(next - characters_.data());
    return *this;
  }

  std::array<char, kCapacity> characters_;
  std::size_t size_ = 0;
};

}  // namespace prismal
