#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace prismal {

/// A hash that depends on a seed, eight bytes at a step: names are short, and they are asked for
/// with every key that is drawn. Who does not know the seed can't make many texts of one hash.
class TextHash {
 public:
  explicit TextHash(std::uint64_t seed) : seed_(seed) {}

  std::uint64_t operator()(std::string_view text) const {
    const char* from = text.data();
    std::size_t left = text.size();
    std::uint64_t state = seed_ ^ mixed(left ^ kFirst, kSecond);
    for (; left > 16; left -= 16, from += 16) {
      state = mixed(word(from) ^ kFirst ^ seed_, word(from + 8) ^ state);
    }
    // The last sixteen bytes or fewer as two words, which may overlap.
    if (left >= 8) return mixed(word(from) ^ kSecond ^ seed_, word(from + left - 8) ^ state);
    if (left >= 4) return mixed(half(from) ^ kSecond ^ seed_, half(from + left - 4) ^ state);
    if (left == 0) return mixed(kSecond ^ seed_, state);
    const std::uint64_t letters =
        byte(from) << 16U | byte(from + left / 2) << 8U | byte(from + left - 1);
    return mixed(letters ^ kSecond ^ seed_, state);
  }

 private:
  // Any odd numbers with as many ones as zeros.
  static constexpr std::uint64_t kFirst = 0x9E3779B97F4A7C15U;
  static constexpr std::uint64_t kSecond = 0xD1B54A32D192ED03U;

  /// Both halves of the product folded: every bit of both factors reaches most of the result.
  static std::uint64_t mixed(std::uint64_t a, std::uint64_t b) {
    __extension__ using Product = unsigned __int128;
    const Product product = static_cast<Product>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
  }

  static std::uint64_t word(const char* from) { return load<std::uint64_t>(from); }
  static std::uint64_t half(const char* from) { return load<std::uint32_t>(from); }
  static std::uint64_t byte(const char* from) { return static_cast<unsigned char>(*from); }

  template <class Number>
  static Number load(const char* from) {
    Number number{};
    std::memcpy(&number, from, sizeof number);
    return number;
  }

  std::uint64_t seed_;
};

}  // namespace prismal
