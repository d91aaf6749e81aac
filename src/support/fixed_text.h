#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace prismal {

/// A short text put together in place, without an allocation. What does not fit is cut off.
template <std::size_t kCapacity>
class FixedText {
 public:
  /// Appends texts, single characters and, in decimal, integers of 64 bits. All of them at once,
  /// for the length is then counted in a register: characters in memory could be its bytes.
  template <class... Parts>
  FixedText& append(const Parts&... parts) {
    std::size_t size = size_;
    ((size = put(size, parts)), ...);
    size_ = size;
    return *this;
  }

  std::string_view view() const { return {characters_.data(), size_}; }

 private:
  // Each writes one part behind `size` characters and answers how many there are then.

  std::size_t put(std::size_t size, char c) {
    if (size < kCapacity) characters_[size++] = c;
    return size;
  }
  std::size_t put(std::size_t size, std::string_view text) {
    const std::size_t length = std::min(text.size(), kCapacity - size);
    copy(text.data(), length, characters_.data() + size);
    return size + length;
  }
  template <std::integral Number>
  std::size_t put(std::size_t size, Number number) {
    // What most numbers here are.
    if (number >= 0 && number < 10) return put(size, static_cast<char>('0' + number));
    char* const end = characters_.data() + kCapacity;
    const auto [next, error] = std::to_chars(characters_.data() + size, end, number);
    return error == std::errc() ? static_cast<std::size_t>(next - characters_.data()) : size;
  }

  /// Most texts here are of one or two words, which may overlap. What the compiler makes of a copy
  /// that it knows to be short takes as long to start as all the rest of a key.
  static void copy(const char* from, std::size_t length, char* to) {
    constexpr std::size_t kWord = sizeof(std::uint64_t);
    if (length < kWord || length > 2 * kWord) {
      std::copy_n(from, length, to);
      return;
    }
    std::copy_n(from, kWord, to);
    std::copy_n(from + length - kWord, kWord, to + length - kWord);
  }

  std::array<char, kCapacity> characters_;
  std::size_t size_ = 0;
};

}  // namespace prismal
