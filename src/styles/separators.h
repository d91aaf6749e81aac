#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace prismal {

#if defined(__SSE2__)

/// Sixteen characters of a condition, on a machine that can compare so many.
struct CharacterBlock {
  static constexpr std::size_t kSize = 16;

  /// A bit for each "," and ";", the lowest for the first character.
  static std::uint32_t separators(const char* text) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    const __m128i marks = _mm_or_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8(',')),
                                       _mm_cmpeq_epi8(block, _mm_set1_epi8(';')));
    return static_cast<std::uint32_t>(_mm_movemask_epi8(marks));
  }
};

#else

/// Eight characters of a condition, on any machine.
struct CharacterBlock {
  static constexpr std::size_t kSize = 8;

  /// A bit for each "," and ";", the lowest for the first character.
  static std::uint32_t separators(const char* text) {
    std::uint64_t word = 0;
    std::memcpy(&word, text, kSize);
    constexpr bool kLowFirst = std::endian::native == std::endian::little;
    const std::uint64_t marks = zeroBytes(word ^ everyByte(',')) | zeroBytes(word ^ everyByte(';'));
    // The high bits gathered in the highest byte, the first character's lowest.
    return static_cast<std::uint32_t>(
        (marks >> 7U) * (kLowFirst ? 0x0102040810204080U : 0x8040201008040201U) >> 56U);
  }

 private:
  static constexpr std::uint64_t everyByte(char c) {
    return 0x0101010101010101U * static_cast<unsigned char>(c);
  }
  /// The high bit of each byte that is zero.
  static constexpr std::uint64_t zeroBytes(std::uint64_t word) {
    constexpr std::uint64_t kLowBits = 0x7F7F7F7F7F7F7F7FU;
    return ~(((word & kLowBits) + kLowBits) | word | kLowBits);
  }
};

#endif

/// The places of a condition's separators, one after the other, found for many characters at a
/// step: what lies between them is too short for a search of each.
class Separators {
 public:
  explicit Separators(std::string_view text) : text_(text) {}

  /// The next one; behind the last the end of the text, once. What lies before `place`, in which
  /// there is none that has not been taken, is not looked at.
  std::size_t next(std::size_t place) {
    if (bits_ == 0) look(place);
    const auto bit = static_cast<std::size_t>(std::countr_zero(bits_));
    bits_ &= bits_ - 1;
    return start_ + bit;
  }

  /// Lets the next one be the first behind whatever place is named then.
  void forget() { bits_ = 0; }

 private:
  static constexpr std::size_t kBlock = CharacterBlock::kSize;

  /// Finds those of the first window behind `place` that has one. The end of the text is one.
  void look(std::size_t place) {
    for (start_ = place; text_.size() - start_ > 2 * kBlock; start_ += 2 * kBlock) {
      bits_ = separatorsOfTwo(start_, start_ + kBlock);
      if (bits_ != 0) return;
    }
    const std::size_t left = text_.size() - start_;
    bits_ = separatorsOfRest(left) | std::uint64_t{1} << left;
  }

  /// Those of a block at the start of the window and of another, which may overlap it.
  std::uint64_t separatorsOfTwo(std::size_t first, std::size_t second) const {
    return separatorsAt(first) | separatorsAt(second) << (second - first);
  }

  std::uint64_t separatorsOfRest(std::size_t left) const {
    if (left > kBlock) return separatorsOfTwo(start_, text_.size() - kBlock);
    // The text's last block, without what lies before the window in it.
    if (text_.size() >= kBlock) return separatorsAt(text_.size() - kBlock) >> (kBlock - left);
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < left; ++i) {
      const char c = text_[start_ + i];
      bits |= std::uint64_t{c == ',' || c == ';'} << i;
    }
    return bits;
  }

  std::uint64_t separatorsAt(std::size_t place) const {
    return CharacterBlock::separators(text_.data() + place);
  }

  std::string_view text_;
  std::uint64_t bits_ = 0;  // those of the window that have not been taken
  std::size_t start_ = 0;   // of the window
};

}  // namespace prismal
